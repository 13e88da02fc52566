// SPDX-License-Identifier: MIT
// A plug-in that does not use the library: it shows that modules are unloaded here unless something keeps them.
extern "C" __attribute__((visibility("default"))) int answer() { return 42; }
