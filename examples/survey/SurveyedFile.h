// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "Findings.h"

/// A file and what was found in it, or a group of files and their sum. Its columns are properties, so that it can be
/// sorted and grouped by key.
class SurveyedFile : public quoll::NSObject {
  QF_CLASS(SurveyedFile, quoll::NSObject)
 public:
  SurveyedFile(const std::string& name, Findings findings);

  quoll::Ref<quoll::NSString> name() const { return name_; }
  quoll::Ref<quoll::NSString> extension() const;  ///< ".txt", or "none".
  uint64_t lines() const { return findings_.lines; }
  uint64_t blank() const { return findings_.blankLines; }
  uint64_t longest() const { return findings_.longestLength; }
  uint64_t which() const { return findings_.longestLine; }
  quoll::Ref<quoll::NSString> ends() const;
  const Findings& findings() const { return findings_; }

  void add(const SurveyedFile* other) { findings_ += other->findings_; }

 private:
  const quoll::Ref<quoll::NSString> name_;
  Findings findings_;
};

/// The columns that a table can be sorted by: the names of the properties.
inline constexpr const char* columns[] = {"lines", "blank", "longest", "which", "ends", "name"};
