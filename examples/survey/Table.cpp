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
  return finderCompare(cast<NSString>(mine), cast<NSString>(theirs));
}

/// The keys of the ten largest counts, the largest first; of equal counts the least key first.
Ref<NSArray> mostFrequent(const NSDictionary* counts) {
  const Ref<NSArray> keys = Sort(counts->allKeys(), [&](NSObject* a, NSObject* b) {
    const auto byCount = cast<NSNumber>(counts->objectForKey(b))->compare(cast<NSNumber>(counts->objectForKey(a)));
    return byCount == NSOrderedSame ? send<NSComparisonResult>(a, "compare:"_sel, b) : byCount;
  });
  return Filter(keys, [](NSObject*, uint64_t place) { return place < 10; });
}

void printWordsOf(const SurveyedFile* file, const NSString* name) {
  const Ref<NSDictionary> words = file->findings().words;
  const Ref<NSNumber> all = cast<NSNumber>(words->allValues()->valueForKeyPath("@sum.self"_ns));
  const Ref<NSArray> frequent = Map(mostFrequent(words), [&](NSString* word) {
    return NSString::stringWithFormat("%@ %@"_ns, word, words->objectForKey(word));
  });
  std::cout << NSString::stringWithFormat("%9@ %9llu  %@\n                     %@\n"_ns, all, words->count(), name,
                                          frequent->componentsJoinedByString(", "_ns));
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
  Each(mostFrequent(counts), [&](NSNumber* length) {
    std::cout << NSString::stringWithFormat("%9@  %@\n"_ns, counts->objectForKey(length), length);
  });
}

void printWords(const NSArray* files) {
  std::cout << "\n    words different  file and its most frequent words\n";
  const Ref<NSArray> sorted =
      Sort(files, [](SurveyedFile* a, SurveyedFile* b) { return finderCompare(a->name(), b->name()); });
  Each(sorted, [](SurveyedFile* file) { printWordsOf(file, file->name()); });
  const Ref<SurveyedFile> sum = sumOf(files);
  printWordsOf(sum, NSString::stringWithFormat("total of %@"_ns, counted(files->count())));
}
