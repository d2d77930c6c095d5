// A shared object, but no plug-in.

extern "C" __attribute__((visibility("default"))) int somethingElse();
int somethingElse() {
  return 1;
}
