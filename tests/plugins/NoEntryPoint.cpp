// A shared object that is not a plug-in.

extern "C" __attribute__((visibility("default"))) int somethingElse();
int somethingElse() {
  return 1;
}
