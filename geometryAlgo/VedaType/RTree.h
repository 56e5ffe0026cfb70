#pragma once  // geometryAlgo/VedaType/RTree.h

#include "geometryAlgo/VedaType/RTree/GenericRTree.h"  // TRTree<T>: items of any type under boxes
#include "geometryAlgo/VedaType/RTree/ObjectRTree.h"   // TRTree<>, TRRTree2D, TRList, T2DRList
#include "geometryAlgo/VedaType/RTree/RTreeNode.h"     // TRTreeNode<T>
