#pragma once  // containers/TreeAlgorithm.h

#include "containers/TreeAlgorithm/MinHeap.h"    // TMinHeap<T, TComparer>, THeapNode<T>
#include "containers/TreeAlgorithm/MultiTree.h"  // TMultiTree<T>, TMultiTreeList<T>
#include "containers/TreeAlgorithm/TreeNode.h"   // TTreeNode<T>
