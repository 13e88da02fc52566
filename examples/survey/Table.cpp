// SPDX-License-Identifier: MIT
#include "Table.h"

#include <iostream>

using namespace quoll;
using namespace quoll::literals;

namespace {

void printRow(const SurveyedFile* file, const NSString* which, const NSString* name) {
  std::cout << NSString::stringWithFormat("%9llu %9llu %9llu  %-12s  %-10s  %@\n"_ns, file->lines(), file->blank(),
                                          file->longest(), which->utf8().c_str(), file->ends()->utf8().c_str(), name);
}

void printHeading(const char* last) {
  std::cout << "    lines     blank   longest  which         ends        " << last << '\n';
}

Ref<NSString> counted(uint64_t files) {
  return NSString::stringWithFormat(files == 1 ? "%llu file"_ns : "%llu files"_ns, files);
}

Ref<SurveyedFile> sumOf(const NSArray* files) {
  const Ref<SurveyedFile> nothing = make<SurveyedFile>("", Findings());
  return cast<SurveyedFile>(Reduce(files, nothing, [](SurveyedFile* sum, SurveyedFile* file) {
    sum->add(file);
    return Ref(sum);
  }));
}

NSComparisonResult compareByColumn(const NSString* column, NSObject* a, NSObject* b) {
  const Ref<NSObject> mine = a->valueForKey(column), theirs = b->valueForKey(column);
  if (as<NSNumber>(mine)) return send<NSComparisonResult>(theirs, "compare:"_sel, mine);
  return send<NSComparisonResult>(mine, "compare:"_sel, theirs);
}

/// How many lines of all files have each length.
Ref<NSMutableDictionary> lineLengths(const NSArray* files) {
  const Ref<NSMutableDictionary> counts = NSMutableDictionary::dictionary();
  const Ref<SurveyedFile> sum = sumOf(files);
  for (const auto& [length, lines] : sum->findings().lineLengths) {
    counts->setObject_forKey(box(lines), box(length));
  }
  return counts;
}

}  // namespace

void printFiles(const NSArray* files, const NSString* column) {
  printHeading("file");
  const Ref<NSArray> sorted = Sort(files, [&](NSObject* a, NSObject* b) { return compareByColumn(column, a, b); });
  Each(sorted, [](SurveyedFile* file) {
    printRow(file, NSString::stringWithFormat("line %llu"_ns, file->which()), file->name());
  });
  printRow(sumOf(files), ""_ns, NSString::stringWithFormat("total of %@"_ns, counted(files->count())));
}

void printExtensions(const NSArray* files) {
  std::cout << '\n';
  printHeading("extension");
  const Ref<NSDictionary> groups = GroupBy(files, "extension"_ns);
  Each(Sort(groups->allKeys()), [&](NSString* extension) {
    const Ref<NSArray> group = cast<NSArray>(groups->objectForKey(extension));
    printRow(sumOf(group), ""_ns, NSString::stringWithFormat("%@, %@"_ns, extension, counted(group->count())));
  });
}

void printLineLengths(const NSArray* files) {
  std::cout << "\n    lines  of length\n";
  const Ref<NSDictionary> counts = lineLengths(files);
  const Ref<NSArray> lengths = Sort(counts->allKeys(), [&](NSNumber* a, NSNumber* b) {
    const auto byCount = cast<NSNumber>(counts->objectForKey(b))->compare(cast<NSNumber>(counts->objectForKey(a)));
    return byCount == NSOrderedSame ? a->compare(b) : byCount;
  });
  Each(Filter(lengths, [](NSNumber*, uint64_t place) { return place < 10; }), [&](NSNumber* length) {
    std::cout << NSString::stringWithFormat("%9@  %@\n"_ns, counts->objectForKey(length), length);
  });
}
