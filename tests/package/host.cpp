// SPDX-License-Identifier: MIT
// host MODULE stays|goes: loads and closes the module; passes when it then is, or is not, still in memory.
#include <dlfcn.h>

#include <cstdio>
#include <cstring>

namespace {

int fail(const char* what) {
  std::fprintf(stderr, "%s\n", what);
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return fail("usage: host MODULE stays|goes");
  void* module = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
  if (!module) return fail(dlerror());
  auto* answer = reinterpret_cast<int (*)()>(dlsym(module, "answer"));
  if (!answer || answer() != 42) return fail("the module does not answer");
  if (dlclose(module) != 0) return fail(dlerror());
  const bool loaded = dlopen(argv[1], RTLD_NOW | RTLD_NOLOAD) != nullptr;
  if (loaded != (std::strcmp(argv[2], "stays") == 0)) return fail(loaded ? "it is still loaded" : "it was unloaded");
  return loaded && answer() != 42 ? fail("it is loaded and does not answer") : 0;
}
