// A shared library that is no host's module.
extern "C" int NothingHere();
extern "C" int NothingHere() { return 0; }
