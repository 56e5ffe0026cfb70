#pragma once  // containers/TreeAlgorithm.h

#include "containers/TreeAlgorithm/MultiTree.h"  // TMultiTree<T>, TMultiTreeList<T>
#include "containers/TreeAlgorithm/TreeNode.h"   // TTreeNode<T>
