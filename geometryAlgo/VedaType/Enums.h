#pragma once  // geometryAlgo/VedaType/Enums.h

namespace tarnalgo {

/// Where the other shape lies with respect to this one, the other shape being the subject. So
/// `A.RelationWith(B)` is `srContain` when B contains A.
enum class TShapeRelation {
  srOn,         ///< on the boundary
  srIn,         ///< inside
  srOut,        ///< outside
  srContain,    ///< containing this one
  srContained,  ///< contained by this one
  srCross,      ///< crossing this one
  srDeviate,    ///< apart from this one
  srEqual       ///< the same shape
};
using enum TShapeRelation;

/// The same question for two one-dimensional ranges, the other range being the subject: contained
/// by this one, overlapping it, containing it, apart from it.
enum class TRangeRelation { rgContained, rgCross, rgContain, rgDeviate };
using enum TRangeRelation;

/// The eight compass directions, Y upwards, and "any", which is none of them.
enum class TDir {
  drAny,
  drLeft,
  drRight,
  drDown,
  drUp,
  drLeftDown,
  drLeftUp,
  drRightDown,
  drRightUp
};
using enum TDir;

}  // namespace tarnalgo
