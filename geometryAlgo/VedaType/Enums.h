#pragma once  // geometryAlgo/VedaType/Enums.h

namespace tarnalgo {

/// Where the other shape lies with respect to this one, the other shape being the subject: on the
/// boundary, inside, outside, containing this one, contained by this one, crossing it, apart,
/// equal. So `A.RelationWith(B)` is `srContain` when B contains A.
enum class TShapeRelation {
  srOn,
  srIn,
  srOut,
  srContain,
  srContained,
  srCross,
  srDeviate,
  srEqual
};
using enum TShapeRelation;

/// The same question for two one-dimensional ranges, the other range being the subject.
enum class TRangeRelation { rgContained, rgCross, rgContain, rgDeviate };
using enum TRangeRelation;

/// The eight compass directions and "any".
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
