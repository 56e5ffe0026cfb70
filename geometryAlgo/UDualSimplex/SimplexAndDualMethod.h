#pragma once  // geometryAlgo/UDualSimplex/SimplexAndDualMethod.h

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "geometryAlgo/UDualSimplex/InequalityData.h"
#include "geometryAlgo/UDualSimplex/IntegerVec.h"
#include "geometryAlgo/UDualSimplex/SimplexTableau.h"
#include "geometryAlgo/UMatrixAlgo/FloatMatrix.h"
#include "geometryAlgo/UMatrixAlgo/FloatVector.h"

namespace tarnalgo {

/// The unit that its assertions name.
inline constexpr std::string_view kSimplexUnit = "geometryAlgo/UDualSimplex";

/// Linear and integer programs over a dense tableau: primal and dual simplex, branch and bound.
///
///     // the greatest 3x + 2y with x + y <= 4, x + 3y <= 6
///     const TFloatMatrix A = ...;  // rows {4, 1, 1} and {6, 1, 3}
///     TSimplexAndDualMethod Method(A, {kAtMost, kAtMost}, {0, 3, 2}, true, false, false, 0);
///     if (Method.Solve()) Use(Method.X(), Method.Objective());  // {0, 4, 0}, 12
///
/// A program has a row of the matrix for each constraint, with the right-hand side in column 0; a
/// sense for each row, `kAtMost` or `kAtLeast`; and costs, the constant of the objective in element
/// 0. The variables are the columns from 1 on, and none may be negative. Solutions use the same
/// numbers, so their element 0 stays 0.
///
/// A method that ends in true leaves an optimal tableau. For whole programs the solution and the
/// objective are set then; after a lone method `FillSolution` reads them. False: infeasible,
/// unbounded, given up (see `PivotLimit`) or not finite; the solution of a whole program is then
/// zeros and its objective 0.
///
/// The methods pivot by the stated rules. A basis that comes back while the objective stands still
/// means a cycle: for a time the rules of Bland (1977), which never cycle, take their place. And
/// before a verdict, and from time to time, the tableau is held against the program: one that has
/// drifted off it by rounding is formed anew, so that no answer rests on noise.
///
/// Tolerance: reduced costs and right-hand sides of at least -1e-6 count as not negative, elements
/// of at most 1e-6 are no pivots, whatever the scale of the program.
/// Ownership: keeps handles on the program's elements and never writes to them.
/// Errors: the sizes do not fit, or a sense is another number, `EAssertionFailed`. Where memory
/// runs out in a method, tableau and solution are as far as it had come; `Solve` begins afresh.
/// Cost: a pivot goes once over (constraints + 1)·(variables + 1) elements.
class TSimplexAndDualMethod {
 public:
  /// `Integer`: `Solve()` looks for whole numbers by branch and bound. `Revised`: the revised
  /// simplex method takes the place of the primal one where the program starts feasible.
  /// `Limit`: the most pivots of one program and the most programs of a search, 0 for the defaults.
  TSimplexAndDualMethod(TFloatMatrix A, TIntegerVec Senses, TFloatVector C, bool Maximise,
                        bool Integer, bool Revised, int Limit);
  virtual ~TSimplexAndDualMethod() = default;

  // --- Whole programs (SimplexSolve.cpp, BranchAndBound.cpp) ---

  /// The program of the constructor.
  bool Solve();
  /// This program instead, its variables any numbers.
  bool Solve(const TFloatMatrix& A, const TIntegerVec& Senses, const TFloatVector& C,
             bool Maximise);
  /// This program, its variables whole numbers. Bounds are added to the first variable that is not
  /// one, the at-most bound before the at-least bound, breadth first. Of several best solutions
  /// the first one found stays. Without a whole solution after `NodeLimit` programs it is false,
  /// with one the best so far is the answer, and a debug text tells.
  /// In a long search another one, depth first, goes along, one program for each: what its best
  /// solution beats is passed over. The answer of a search that comes to its end is the same
  /// without it, and its programs do not count.
  /// Tolerance: 1e-6 for a whole number; the answer is not rounded. Objectives within 1e-10 (from
  /// a magnitude of 1 on, of the best) are equal, and equal ones are not pruned.
  /// Errors: no row or no column, `EAssertionFailed`.
  bool SolveByBranchAndBound(const TFloatMatrix& A, const TIntegerVec& Senses,
                             const TFloatVector& C, bool Maximise);

  /// Restricts the search for whole numbers to the columns with an element other than 0; all
  /// columns (also those beyond the vector) when it is empty, which is how it starts.
  void SetIntegerColumns(const TIntegerVec& Columns) { FIntegerColumns = Columns.Clone(); }

  /// The solution: element j the value of variable j, element 0 always 0.
  const TFloatVector& X() const { return FX; }
  /// The value of the objective there, its constant included.
  double Objective() const { return FObjective; }
  /// 1000 and 50 for each row and column, unless the constructor was given a limit.
  int PivotLimit() const;
  /// 100000 unless the constructor was given a limit.
  int NodeLimit() const;

  // --- Methods on the tableau (SimplexSolve.cpp) ---

  /// From a tableau whose right-hand sides are not negative; false: unbounded or given up.
  bool SolveBySimplex();
  /// The same pivots, but each tableau is the inverse of the basis times the tableau as built, so
  /// that no rounding is handed on.
  /// Cost: O(rows²·(rows + variables)) a pivot.
  bool SolveByRevisedSimplex();
  /// From a tableau whose reduced costs are not negative; false: infeasible or given up.
  bool SolveByDualSimplex();

  // --- The tableau and its rules (SimplexTable.cpp) ---

  /// Row 0 gets the costs, turned for a maximum; an at-least row is turned too; slack i, the column
  /// of number variables + i, is basic in row i.
  void BuiltSimpleTab(const TFloatMatrix& A, const TIntegerVec& Senses, const TFloatVector& C,
                      bool Maximise);
  /// Appends the slack of a row.
  /// Errors: no such row from 1 on, or it has a slack, `EAssertionFailed`.
  void AddRelaxColumn(int Row);
  /// Makes the tableau dual feasible: sets negative reduced costs and the objective to 0, after
  /// keeping row 0 for `RestoreCosts`. False when no reduced cost is negative.
  bool ChangeSMA();
  /// Keeps row 0 in the working vector.
  void SetWValue();
  /// Puts the kept costs back, expressed in the columns that are not basic now; lets go of them.
  void RestoreCosts();
  /// Pivot.
  /// Errors: no such row from 1 on, or the column is basic or holds 0 there, `EAssertionFailed`.
  void UpdateSMA(int Row, int Column);

  /// Entering column of the simplex method: the least reduced cost below -1e-6; 0 = none.
  /// Ties: within 1e-10 the lower column.
  int GetColCNMinNegative() const;
  /// Leaving row of the simplex method: the least quotient of right-hand side and element of
  /// `Column`, of elements above 1e-6; 0 = none.
  /// Ties: within 1e-10 the upper row.
  /// Errors (of the next but one too): no such column or row from 1 on, `EAssertionFailed`.
  int FindNewBaseIdxByB(int Column) const;
  /// Leaving row of the dual method: the least right-hand side below -1e-6; 0 = none.
  /// Ties: within 1e-10 the upper row.
  int GetRowBMinNegative() const;
  /// Entering column of the dual method: the least quotient of reduced cost and the magnitude of
  /// the element of `Row`, of elements below -1e-6; 0 = none.
  /// Ties: within 1e-10 the lower column.
  int FindNewBaseIdxByCN(int Row) const;
  /// The index of the least quotient V1[i] / V2[i], of |V2[i]| > 1e-6; -1 = none.
  /// Ties: the first; NaN is none.
  /// Errors: `V2` has another size, `EAssertionFailed`.
  static int GetVecDivMinValueId(const TFloatVector& V1, const TFloatVector& V2);
  /// No reduced cost is below -1e-6: nothing improves the objective any more.
  bool CheckReducedCostAllPositive() const;
  /// No right-hand side is below -1e-6: the tableau stands for a feasible solution.
  bool CheckObjValueAllPositive() const;

  /// Sets the solution to `Count` zeros, the objective to 0.
  void InitXVec(int Count);
  /// Reads the solution and the objective off the tableau.
  void FillSolution();
  /// Whether every element of the solution that has to be is whole; `Index` is the first that is
  /// not, else -1.
  bool IsInteger(int& Index) const;

  /// The whole tableau, basic columns included.
  TFloatMatrix Tableau() const;

  // --- Debug texts (SimplexPrint.cpp) ---

  /// The tableau to the debug output.
  void PrintFMA() const;
  /// The elements to the debug output, on one line.
  static void PrintIntVec(const TIntegerVec& Vec);
  /// The solution and the objective to the debug output.
  void PrintResult() const;

 private:
  class TPivotCount;
  struct TStep {
    int Row;  // either 0: no pivot
    int Column;
    bool IsOptimal;
  };

  template <class TChoose>
  bool MakePivots(double Sense, TChoose&& Choose);
  bool RunSimplex(bool FormsAnew);
  bool FormFromInverse();
  bool RunMethods();
  bool RunFromNeitherSide();
  bool Repair();
  bool GiveUp(const char* Reason);
  bool Refresh();
  bool HasDrifted() const;
  std::vector<double> CostsByColumn() const;
  int LowestNegativeCost() const;
  int LowestLeavingRow(int Column) const;
  int LowestInfeasibleRow() const;

  TFloatMatrix FA;
  TIntegerVec FSenses;
  TFloatVector FC;
  bool FMaximise;
  bool FInteger;
  bool FRevised;
  int FLimit;
  TIntegerVec FIntegerColumns;  // none = all

  bool FTurned = false;  // the tableau minimises the negative of a greatest objective
  TSimplexTableau FTable;
  TSimplexTableau FStart;   // the tableau as built, with the costs that count now
  bool FFormsAnew = false;  // the last method run is the revised one
  std::vector<double> FW;   // a kept row 0, by column; empty = none
  TFloatVector FX;
  double FObjective = 0.0;
};

/// How often the simplex method ran in this process. Diagnostics only.
std::int64_t SimplexRunCount();
std::int64_t DualSimplexRunCount();  ///< The same of the dual method.

}  // namespace tarnalgo
