#pragma once  // containers/Container.h

#include "containers/Container/MergeSort.h"   // MergeSort: stable, safe with banded comparers
#include "containers/Container/ObjectList.h"  // TObjectList<T>
