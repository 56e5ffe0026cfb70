#pragma once  // containers/TreeAlgorithm.h

#include "containers/TreeAlgorithm/GeneralSBTree.h"  // TGeneralSBTree<K, V>: an ordered map
#include "containers/TreeAlgorithm/MinHeap.h"        // TMinHeap<T>, THeapNode<T>
#include "containers/TreeAlgorithm/MultiTree.h"      // TMultiTree<T>, TMultiTreeList<T>
#include "containers/TreeAlgorithm/TreeNode.h"       // TTreeNode<T>
