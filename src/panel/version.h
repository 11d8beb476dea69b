// The program's version: for its titles and for the resources of the executable, whose compiler
// reads nothing but macros. The manifest repeats it.
#pragma once

#define CORVANE_VERSION "0.99.6"
#define CORVANE_VERSION_NUMBERS 0, 99, 6, 0
