#pragma once  // containers/Container.h

#include "containers/Container/LentList.h"    // TLentList<T>: starts in storage of its owner
#include "containers/Container/MergeSort.h"   // MergeSort: stable, safe with banded comparers
#include "containers/Container/ObjectList.h"  // TObjectList<T>
