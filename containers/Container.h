#pragma once  // containers/Container.h

#include "containers/Container/Bytewise.h"     // TBytewiseEqual, TBytewiseHash: records by bytes
#include "containers/Container/Collection.h"   // TCollection<T>: a set of records
#include "containers/Container/HashIndex.h"    // THashIndex: the table behind the two dictionaries
#include "containers/Container/LentList.h"     // TLentList<T>: starts in storage of its owner
#include "containers/Container/LinkedList.h"   // TLinkedList<T>, TLinkedListNode<T>, ELinkedList
#include "containers/Container/MergeSort.h"    // MergeSort: stable, safe with banded comparers
#include "containers/Container/NodePool.h"     // TNodePool<TNode>: memory for the nodes of a tree
#include "containers/Container/ObjectList.h"   // TObjectList<T>
#include "containers/Container/OrderedDic.h"   // TOrderedDic<K, V>: enumerates in order of addition
#include "containers/Container/OwnValueDic.h"  // TOwnValueDic<K, V>
