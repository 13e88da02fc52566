// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/StructPointerFunctions.h"

#include "QuollFoundation/platform/basics/Geometry.h"
#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/object/Send.h"

namespace quoll::inline v1 {

extern "C" {
uint64_t _QFPointerFunctionsNSRangeStructSize(const void*) { return sizeof(NSRange); }
uint64_t _QFPointerFunctionsCGRectStructSize(const void*) { return sizeof(CGRect); }
uint64_t _QFPointerFunctionsCGPointStructSize(const void*) { return sizeof(CGPoint); }
uint64_t _QFPointerFunctionsCGSizeStructSize(const void*) { return sizeof(CGSize); }
}

namespace {

Ref<NSPointerFunctions> functionsWithSize(uint64_t (*size)(const void*), Class* cls) {
  auto functions = made<NSPointerFunctions>(cls, "initWithOptions:"_sel, QFStructPointerFunctionsOptions);
  if (functions) functions->setSizeFunction(size);
  return functions;
}

}  // namespace

Ref<NSPointerFunctions> pointerFunctionsForNSRange_ofClass(Class* cls) {
  return functionsWithSize(&_QFPointerFunctionsNSRangeStructSize, cls);
}
Ref<NSPointerFunctions> pointerFunctionsForCGRect_ofClass(Class* cls) {
  return functionsWithSize(&_QFPointerFunctionsCGRectStructSize, cls);
}
Ref<NSPointerFunctions> pointerFunctionsForCGPoint_ofClass(Class* cls) {
  return functionsWithSize(&_QFPointerFunctionsCGPointStructSize, cls);
}
Ref<NSPointerFunctions> pointerFunctionsForCGSize_ofClass(Class* cls) {
  return functionsWithSize(&_QFPointerFunctionsCGSizeStructSize, cls);
}

namespace detail {

extern constinit const AdditionGroup<NSPointerFunctions> structPointerFunctionAdditions{
    "QFAdditions",
    {classMethod<&pointerFunctionsForNSRange_ofClass>("pointerFunctionsForNSRange"_sel),
     classMethod<&pointerFunctionsForCGRect_ofClass>("pointerFunctionsForCGRect"_sel),
     classMethod<&pointerFunctionsForCGPoint_ofClass>("pointerFunctionsForCGPoint"_sel),
     classMethod<&pointerFunctionsForCGSize_ofClass>("pointerFunctionsForCGSize"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
