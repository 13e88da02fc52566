// SPDX-License-Identifier: MIT
#pragma once

/// The object model and services that everything else stands on.
#include "QuollFoundation/platform/basics/Comparison.h"
#include "QuollFoundation/platform/basics/Geometry.h"
#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/object/AssociatedValues.h"
#include "QuollFoundation/platform/object/AtomicRef.h"
#include "QuollFoundation/platform/object/AutoreleaseScope.h"
#include "QuollFoundation/platform/object/Block.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Equality.h"
#include "QuollFoundation/platform/object/FastEnumeration.h"
#include "QuollFoundation/platform/object/LiveObjects.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/NSInvocation.h"
#include "QuollFoundation/platform/object/NSProxy.h"
#include "QuollFoundation/platform/object/Protocol.h"
#include "QuollFoundation/platform/object/Reflection.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/object/Synchronized.h"
#include "QuollFoundation/platform/strings/NSString.h"
