"""The lints: each module has a function `check(tree)` that yields findings."""
