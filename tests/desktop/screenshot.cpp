// Saves a picture of the whole screen: for cases that hang and cannot do it themselves.
//
// screenshot FILE
#include "desktop/harness/foreign_windows.h"

int main(int argc, char** argv) {
  return argc == 2 && corvane::desktop::SaveScreenshot(0, argv[1]) ? 0 : 1;
}
