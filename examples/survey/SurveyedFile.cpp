// SPDX-License-Identifier: MIT
#include "SurveyedFile.h"

using namespace quoll;
using namespace quoll::literals;

Class* SurveyedFile::classObject() {
  static Class* const cls = ClassBuilder<SurveyedFile>("SurveyedFile")
                                .property<&SurveyedFile::name>("name")
                                .property<&SurveyedFile::extension>("extension")
                                .property<&SurveyedFile::lines>("lines")
                                .property<&SurveyedFile::blank>("blank")
                                .property<&SurveyedFile::longest>("longest")
                                .property<&SurveyedFile::which>("which")
                                .property<&SurveyedFile::ends>("ends")
                                .build();
  return cls;
}

namespace {
/// A name that is no UTF-8 is shown as Latin-1.
Ref<NSString> textOf(const std::string& name) {
  if (Ref<NSString> text = NSString::stringWithUTF8(name)) return text;
  return NSString::stringWithBytes_encoding(name, NSISOLatin1StringEncoding);
}
}  // namespace

SurveyedFile::SurveyedFile(const std::string& name, Findings findings)
    : name_(textOf(name)), findings_(std::move(findings)) {}

Ref<NSString> SurveyedFile::extension() const {
  const std::string path = name_->utf8();
  const size_t file = path.find_last_of('/') + 1;  // 0 where there is no slash
  const size_t dot = path.find_last_of('.');
  if (dot == path.npos || dot <= file) return "none"_ns;
  return NSString::stringWithUTF8(path.substr(dot));
}

Ref<NSString> SurveyedFile::ends() const { return NSString::stringWithUTF8(findings_.terminatorMix()); }
