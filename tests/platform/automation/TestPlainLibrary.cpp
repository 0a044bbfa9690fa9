// A library without class exports, for tests.
extern "C" __attribute__((visibility("default"))) int PlainLibraryAnswer() {
  return 42;
}
