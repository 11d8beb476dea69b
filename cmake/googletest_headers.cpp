// Nothing of its own: see googletest.cmake.
