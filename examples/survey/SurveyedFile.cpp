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

SurveyedFile::SurveyedFile(const std::string& name, Findings findings)
    : name_(NSString::stringWithUTF8(name)), findings_(std::move(findings)) {
  if (!name_) const_cast<Ref<NSString>&>(name_) = NSString::stringWithBytes_encoding(name, NSISOLatin1StringEncoding);
}

Ref<NSString> SurveyedFile::extension() const {
  const std::string path = name_->utf8();
  const size_t file = path.find_last_of('/') + 1;  // 0 where there is no slash
  const size_t dot = path.find_last_of('.');
  if (dot == path.npos || dot <= file) return "none"_ns;
  return NSString::stringWithUTF8(path.substr(dot));
}

Ref<NSString> SurveyedFile::ends() const { return NSString::stringWithUTF8(findings_.terminatorMix()); }
