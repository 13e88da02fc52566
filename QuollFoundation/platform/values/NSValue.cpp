// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/values/NSValue.h"

#include <cstring>
#include <string>

#include "QuollFoundation/platform/object/AssociatedValues.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/platform/values/NSNumber.h"
#include "QuollFoundation/platform/values/StructTexts.h"

namespace quoll::inline v1 {

Class* NSValue::classObject() {
  static Class* const cls =
      ClassBuilder<NSValue>("NSValue")
          .classMethod<&NSValue::valueWithBytes_objCType_ofClass>("valueWithBytes:objCType:"_sel)
          .classMethod<&NSValue::valueWithBytes_objCType_ofClass>("value:withObjCType:"_sel)
          .classMethod<&NSValue::valueWithRange_ofClass>("valueWithRange:"_sel)
          .classMethod<&NSValue::valueWithRect_ofClass>("valueWithRect:"_sel)
          .classMethod<&NSValue::valueWithPoint_ofClass>("valueWithPoint:"_sel)
          .classMethod<&NSValue::valueWithSize_ofClass>("valueWithSize:"_sel)
          .classMethod<&NSValue::valueWithPointer_ofClass>("valueWithPointer:"_sel)
          .classMethod<&NSValue::valueWithNonretainedObject_ofClass>("valueWithNonretainedObject:"_sel)
          .initializer<&NSValue::initWithBytes_objCType_ofClass>("initWithBytes:objCType:"_sel)
          .method<&NSValue::objCType>("objCType"_sel)
          .method<&NSValue::getValue>("getValue:"_sel)
          .method<&NSValue::getValue_size>("getValue:size:"_sel)
          .method<&NSValue::rangeValue>("rangeValue"_sel)
          .method<&NSValue::rectValue>("rectValue"_sel)
          .method<&NSValue::pointValue>("pointValue"_sel)
          .method<&NSValue::sizeValue>("sizeValue"_sel)
          .method<&NSValue::pointerValue>("pointerValue"_sel)
          .method<&NSValue::nonretainedObjectValue>("nonretainedObjectValue"_sel)
          .method<&NSValue::isEqualToValue>("isEqualToValue:"_sel)
          .build();
  return cls;
}

namespace {

constexpr char keyOfContents = 0;

std::string_view checkedType(const char* type, Class* cls) {
  if (!type) detail::raiseNilArgument(cls, "initWithBytes:objCType:");
  const detail::EncodedType first = detail::firstType(type);
  if (!first.rest.empty()) {
    raise(NSInvalidArgumentException, "\"" + std::string(type) + "\" encodes more than one type");
  }
  return first.type;
}

bool isPointer(const char* type) {
  const char lead = type[*type == 'r'];
  return lead == '^' || lead == '*' || lead == ':' || lead == '#' || lead == '@';
}

}  // namespace

Ref<NSValue> NSValue::withBytes(const void* bytes, const char* type, Class* cls) {
  if (cls == NSValue::classObject()) return initWithBytes_objCType_ofClass(bytes, type, cls);
  return made<NSValue>(cls, "initWithBytes:objCType:"_sel, bytes, type);
}

Ref<NSValue> detail::makeValue(const void* bytes, size_t size, std::string_view type) {
  Ref<NSValue> value = makeSized<NSValue>(size + type.size() + 1);
  auto* place = reinterpret_cast<char*>(value.get() + 1);
  if (size) std::memcpy(place, bytes, size);
  std::memcpy(place + size, type.data(), type.size());
  place[size + type.size()] = '\0';
  value->bytes_ = place;
  value->encoding_ = place + size;
  return value;
}

Ref<NSValue> NSValue::initWithBytes_objCType_ofClass(const void* bytes, const char* text, Class* cls) {
  if (cls->isSubclassOfClass(NSNumber::classObject())) {
    return NSNumber::initWithBytes_objCType_ofClass(bytes, text, cls);
  }
  const std::string_view type = checkedType(text, cls);
  const size_t size = detail::sizeOfType(type);
  if (size && !bytes) detail::raiseNilArgument(cls, "initWithBytes:objCType:");
  Ref<NSValue> contents = detail::makeValue(bytes, size, type);
  if (cls == NSValue::classObject()) return contents;
  Ref<NSValue> value = create<NSValue>(cls);  // of a size unknown here: nothing can stand behind it
  value->bytes_ = contents->bytes_;
  value->encoding_ = contents->encoding_;
  setAssociatedValue(value, &keyOfContents, contents);
  return value;
}

size_t NSValue::size() const { return bytes_ ? static_cast<size_t>(encoding_ - static_cast<const char*>(bytes_)) : 0; }

Ref<NSValue> NSValue::valueWithBytes_objCType_ofClass(const void* bytes, const char* type, Class* cls) {
  return withBytes(bytes, type, cls);
}
Ref<NSValue> NSValue::valueWithRange_ofClass(NSRange range, Class* cls) {
  return withBytes(&range, StructEncoding<NSRange>::text, cls);
}
Ref<NSValue> NSValue::valueWithRect_ofClass(CGRect rect, Class* cls) {
  return withBytes(&rect, StructEncoding<CGRect>::text, cls);
}
Ref<NSValue> NSValue::valueWithPoint_ofClass(CGPoint point, Class* cls) {
  return withBytes(&point, StructEncoding<CGPoint>::text, cls);
}
Ref<NSValue> NSValue::valueWithSize_ofClass(CGSize size, Class* cls) {
  return withBytes(&size, StructEncoding<CGSize>::text, cls);
}
Ref<NSValue> NSValue::valueWithPointer_ofClass(const void* pointer, Class* cls) {
  return withBytes(&pointer, "^v", cls);
}
Ref<NSValue> NSValue::valueWithNonretainedObject_ofClass(const NSObject* object, Class* cls) {
  return withBytes(&object, "@", cls);
}

void NSValue::getValue(void* buffer) const {
  const size_t size = this->size();
  if (size && !buffer) detail::raiseNilArgument(this, "getValue:");
  if (size) std::memcpy(buffer, bytes_, size);
}

void NSValue::getValue_size(void* buffer, uint64_t size) const {
  const size_t own = this->size();
  if (size != own) {
    raise(NSInvalidArgumentException, detail::methodName(this, "getValue:size:") + ": cannot get a value of " +
                                          std::to_string(own) + " bytes with size " + std::to_string(size));
  }
  getValue(buffer);
}

void NSValue::refuse(std::string_view wanted) const {
  raise(NSInvalidArgumentException, "a value of type " + std::string(encoding_) + " is held by " +
                                        detail::plainDescription(this) + " where one of type " + std::string(wanted) +
                                        " is asked for");
}

void NSValue::copyAs(std::string_view type, size_t size, void* out) const {
  if (type != encoding_ || size != this->size()) refuse(type);
  getValue(out);
}

void* NSValue::pointerValue() const {
  if (!isPointer(encoding_)) refuse("^v");
  void* pointer;
  std::memcpy(&pointer, bytes_, sizeof pointer);
  return pointer;
}
NSObject* NSValue::nonretainedObjectValue() const {
  NSObject* object;
  copyAs("@", sizeof object, &object);
  return object;
}

bool NSValue::isEqual(const NSObject* object) const {
  if (this == object) return true;
  const auto* other = as<NSValue>(object);
  if (!other || as<NSNumber>(other) || std::strcmp(encoding_, other->encoding_) != 0) return false;
  const size_t size = this->size();
  return size == 0 || std::memcmp(bytes_, other->bytes_, size) == 0;
}

uint64_t NSValue::hash() const {
  return detail::hashOf({static_cast<const char*>(bytes_), size()}, detail::hashOf(encoding_));
}

namespace {

std::string hexadecimal(const void* bytes, size_t size) {
  std::string text;
  for (size_t i = 0; i < size; ++i) {
    const auto byte = static_cast<const unsigned char*>(bytes)[i];
    text += "0123456789abcdef"[byte >> 4];
    text += "0123456789abcdef"[byte & 15];
  }
  return text;
}

}  // namespace

Ref<NSString> NSValue::description() const {
  const std::string_view type = encoding_;
  if (type == StructEncoding<NSRange>::text)
    return "NSRange: "_ns->stringByAppendingString(NSStringFromRange(rangeValue()));
  if (type == StructEncoding<CGRect>::text)
    return "NSRect: "_ns->stringByAppendingString(NSStringFromRect(rectValue()));
  if (type == StructEncoding<CGPoint>::text)
    return "NSPoint: "_ns->stringByAppendingString(NSStringFromPoint(pointValue()));
  if (type == StructEncoding<CGSize>::text)
    return "NSSize: "_ns->stringByAppendingString(NSStringFromSize(sizeValue()));
  const size_t size = this->size();
  return NSString::stringWithUTF8("{length = " + std::to_string(size) + ", bytes = 0x" + hexadecimal(bytes_, size) +
                                  "}");
}

Ref<NSObject> NSValue::copyWithZone(NSZone*) const { return const_cast<NSValue*>(this); }

}  // namespace quoll::inline v1
