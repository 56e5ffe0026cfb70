#pragma once  // host/tarnds.h

#include "host/tarnds/ListUtils.h"  // TListUtils, Tuple2
#include "host/tarnds/SBTree.h"     // TSBTree, TSBTreeIntKey
