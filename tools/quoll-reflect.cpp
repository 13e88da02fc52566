// SPDX-License-Identifier: MIT
// Prints what the library offers, from its own class tables.
#include <cstring>
#include <iostream>

#include "QuollFoundation/platform/object/Reflection.h"

using namespace quoll;

namespace {

int usage() {
  std::cerr << "usage: quoll-reflect                 every class and protocol with its methods\n"
               "       quoll-reflect CLASS...        these classes\n"
               "       quoll-reflect --keys CLASS    the keys that key-value coding reads from instances of a class\n";
  return 2;
}

void printClass(const Class* cls) {
  std::cout << "@class " << cls->name() << '\n';
  for (const MethodDescription& method : methodsOf(cls)) {
    std::cout << method.sign << '[' << cls->name();
    if (!method.group.empty()) std::cout << '(' << method.group << ')';
    std::cout << ' ' << method.selector << "]\t" << method.encoding << '\n';
  }
}

void printProtocol(const Protocol* protocol) {
  std::cout << "@protocol " << protocol->name() << '\n';
  for (const ProtocolMethod& method : protocol->methods()) {
    std::cout << "-[" << protocol->name() << ' ' << method.selector.name() << "]\t" << method.encoding << '\n';
  }
}

/// Null, and a complaint, when there is no class of this name.
Class* classOrComplaint(const char* name) {
  Class* cls = classNamed(name);
  if (!cls) std::cerr << "quoll-reflect: there is no class " << name << '\n';
  return cls;
}

}  // namespace

int main(int count, char** arguments) {
  if (count >= 2 && std::strcmp(arguments[1], "--keys") == 0) {
    if (count != 3) return usage();
    const Class* cls = classOrComplaint(arguments[2]);
    if (!cls) return 1;
    for (const std::string& key : keysOf(cls)) std::cout << key << '\n';
    return 0;
  }
  if (count >= 2) {
    if (arguments[1][0] == '-') return usage();
    int status = 0;
    for (int i = 1; i < count; ++i) {
      if (const Class* cls = classOrComplaint(arguments[i])) printClass(cls);
      else status = 1;
    }
    return status;
  }
  for (const Class* cls : allClasses()) printClass(cls);
  for (const Protocol* protocol : allProtocols()) printProtocol(protocol);
  return 0;
}
