// A shared library that hands over no classes.
extern "C" [[gnu::visibility("default")]] int anotherSymbol() { return 1; }
