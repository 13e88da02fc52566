// SPDX-License-Identifier: MIT
#include "QuollFoundation/collections/ArrayLists.h"

#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"

namespace quoll::inline v1 {

namespace {

const NSArray* firstArray(const ObjectList* arrays) { return arrays ? cast<NSArray>(arrays->first()) : nullptr; }
NSObject* firstObject(const ObjectList* objects) { return objects ? objects->first() : nullptr; }
Ref<ObjectList> others(const ObjectList* list) { return list ? list->rest() : objects(); }

}  // namespace

// Arrays of arrays

Ref<NSArray> arrayWithObjectsFromArrays_ofClass(const ObjectList* arrays, Class* cls) {
  const bool isMutable = cls->isSubclassOfClass(NSMutableArray::classObject());
  Class* const worker = isMutable ? cls : NSMutableArray::classObject();
  Ref<NSMutableArray> all = send<Ref<NSMutableArray>>(worker, "_arrayWithObjectsFromArray:variableArguments:"_sel,
                                                      firstArray(arrays), others(arrays));
  if (isMutable) return all;
  return NSArray::arrayWithArray_ofClass(all, cls);
}

Ref<NSMutableArray> initWithObjectsFromArrays_ofClass(const ObjectList* arrays, Class* cls) {
  return made<NSMutableArray>(cls, "_initWithObjectsFromArray:variableArguments:"_sel, firstArray(arrays),
                              others(arrays));
}

Ref<NSMutableArray> _arrayWithObjectsFromArray_variableArguments_ofClass(const NSArray* first, const ObjectList* others,
                                                                         Class* cls) {
  return made<NSMutableArray>(cls, "_initWithObjectsFromArray:variableArguments:"_sel, first, others);
}

Ref<NSMutableArray> _initWithObjectsFromArray_variableArguments_ofClass(const NSArray* first, const ObjectList* others,
                                                                        Class* cls) {
  Ref<NSMutableArray> all = made<NSMutableArray>(cls, "initWithArray:"_sel, first);
  if (!all || !first || !others) return all;
  for (const Ref<NSObject>& each : *others) {
    if (!each) break;
    all->addObjectsFromArray(cast<NSArray>(each.get()));
  }
  return all;
}

// Arrays of objects

void _addObject_variableArguments(NSMutableArray* receiver, const NSObject* first, const ObjectList* others) {
  if (!receiver || !first) return;
  receiver->addObject(first);
  if (!others) return;
  for (const Ref<NSObject>& each : *others) {
    if (!each) break;
    receiver->addObject(each);
  }
}

void addObjects(NSMutableArray* receiver, const ObjectList* objects) {
  send(receiver, "_addObject:variableArguments:"_sel, firstObject(objects), others(objects));
}

Ref<NSArray> arrayByAddingObjects(const NSArray* receiver, const ObjectList* objects) {
  if (!receiver) return nullptr;
  if (!firstObject(objects)) return const_cast<NSArray*>(receiver);
  const Ref<NSMutableArray> all = receiver->mutableCopy();
  addObjects(all, objects);
  return all->copy();
}

Ref<NSArray> qf_nilSafeArrayWithMaxCount_objects_ofClass(uint32_t count, const ObjectList* objects, Class* cls) {
  const uint64_t given = objects ? objects->count() : 0;
  if (given < count) {
    raise(NSInvalidArgumentException, detail::methodName(cls, "qf_nilSafeArrayWithMaxCount:objects:") + ": " +
                                          std::to_string(given) + " objects for a count of " + std::to_string(count));
  }
  constexpr uint32_t few = 64;
  NSObject* onStack[few];
  std::vector<NSObject*> onHeap(count > few ? count : 0);
  NSObject** const present = count > few ? onHeap.data() : onStack;
  uint64_t kept = 0;
  for (uint32_t i = 0; i < count; ++i) {
    if (NSObject* each = objects->begin()[i].get()) present[kept++] = each;
  }
  return NSArray::arrayWithObjects_count_ofClass(present, kept, cls);
}

namespace detail {

extern constinit const AdditionGroup<NSArray> arrayLists{
    "QFAdditions",
    {classMethod<&arrayWithObjectsFromArrays_ofClass>("arrayWithObjectsFromArrays:"_sel),
     method<overload<Ref<NSArray>(const NSArray*, const ObjectList*)>(&arrayByAddingObjects)>(
         "arrayByAddingObjects:"_sel),
     classMethod<&qf_nilSafeArrayWithMaxCount_objects_ofClass>("qf_nilSafeArrayWithMaxCount:objects:"_sel)}};

extern constinit const AdditionGroup<NSMutableArray> mutableArrayLists{
    "QFAdditions",
    {classMethod<&arrayWithObjectsFromArrays_ofClass>("arrayWithObjectsFromArrays:"_sel),
     initializer<&initWithObjectsFromArrays_ofClass>("initWithObjectsFromArrays:"_sel),
     method<overload<void(NSMutableArray*, const ObjectList*)>(&addObjects)>("addObjects:"_sel)}};

extern constinit const AdditionGroup<NSMutableArray> arrayListWorkers{
    "QFPrivateAdditions",
    {classMethod<&_arrayWithObjectsFromArray_variableArguments_ofClass>(
         "_arrayWithObjectsFromArray:variableArguments:"_sel),
     initializer<&_initWithObjectsFromArray_variableArguments_ofClass>(
         "_initWithObjectsFromArray:variableArguments:"_sel),
     method<&_addObject_variableArguments>("_addObject:variableArguments:"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
