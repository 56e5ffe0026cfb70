#include "examples/sheet_planner/Ordering.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <set>
#include <utility>

#include "examples/sheet_planner/Contours.h"
#include "examples/sheet_planner/NearestEnds.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

using TStepKind = TPlanStep::TKind;

/// Something to cut, and the numbers of the places where it may begin.
struct TJob {
  TJob(TStepKind Kind, int Index, int APort) : Step{Kind, Index}, Port(APort) {}

  TPlanStep Step;
  int Port;
  int Group = -1;           // of a pass
  std::set<int> Figures;    // of which it cuts something
  int BlockingFigures = 0;  // those with something inside that is not cut yet
  std::vector<TPoint2D> Entries;
  int FirstOfPort = 0;  // number of its first entry in the index of the port, and of the group
  int FirstOfGroup = 0;
};

/// An index of entries that knows whose they are.
struct TEntries {
  std::vector<TPoint2D> Places;
  std::vector<int> Jobs;
  std::unique_ptr<TNearestEnds> Index;

  int Append(const TJob& Job, int Number) {
    const int First = static_cast<int>(Places.size());
    Places.insert(Places.end(), Job.Entries.begin(), Job.Entries.end());
    Jobs.resize(Places.size(), Number);
    return First;
  }
};

class TOrderer {
 public:
  TOrderer(const TSheet& Sheet, const TNesting& Nesting, TPlan& Plan)
      : FSheet(Sheet), FNesting(Nesting), FPlan(Plan) {}

  void Run(const TProgressEvent& Progress) {
    CollectJobs();
    MakeIndexes();
    BlockFigures();
    for (int Job = 0; Job < Count(); ++Job) Switch(Job, At(Job).BlockingFigures == 0);
    FHead = BoundsOf(FSheet).Min;
    const int Part = std::max(Count() / 100, 1);
    for (int Done = 0; Done < Count(); ++Done) {
      Cut(Next());
      if (Progress && ((Done + 1) % Part == 0 || Done + 1 == Count())) {
        Progress(&FPlan, Count(), Done + 1);
      }
    }
    Permute();
  }

 private:
  int Count() const { return static_cast<int>(FJobs.size()); }
  TJob& At(int Job) { return FJobs[static_cast<std::size_t>(Job)]; }
  TOrdinaryContour& ContourAt(int Index) { return FPlan.Contours[static_cast<std::size_t>(Index)]; }
  TOwningFlyCurves& PassAt(int Index) { return FPlan.Passes[static_cast<std::size_t>(Index)]; }

  void CollectJobs() {
    for (std::size_t I = 0; I < FPlan.Passes.size(); ++I) {
      const TOwningFlyCurves& Pass = FPlan.Passes[I];
      TJob Job(TStepKind::Pass, static_cast<int>(I), Pass.First()->ChannelPort());
      Job.Group = FPlan.GroupOfPass[I];
      for (const TFlyCurve* Piece : Pass) {
        if (!Piece->IsFlyGap())
          Job.Figures.insert(FNesting.OfEdgeEnd(Piece->GeCurve()->EndPoint()));
      }
      Job.Entries = {Pass.StartPoint(), Pass.EndPoint()};
      FJobs.push_back(std::move(Job));
    }
    for (int I = 0; I < FPlan.Circles.Count(); ++I) {
      TJob Job(TStepKind::Circle, I, FPlan.Circles[I]->ChannelPort());
      Job.Figures = {FNesting.OfCircle(I)};
      const TGeCurve2D& Curve = *FPlan.Circles[I]->GeCurve();
      for (const double T : {0.0, 0.25, 0.5, 0.75}) Job.Entries.push_back(Curve.PointAtParam(T));
      FJobs.push_back(std::move(Job));
    }
    for (std::size_t I = 0; I < FPlan.Contours.size(); ++I) {
      const TOrdinaryContour& Contour = FPlan.Contours[I];
      TJob Job(TStepKind::Contour, static_cast<int>(I), Contour.Port);
      Job.Figures = {FNesting.OfAnchor(SheetPiece(FSheet, Contour.Pieces[0]).FromAnchor)};
      if (Contour.IsClosed) {
        for (const TContourPiece& Piece : Contour.Pieces) {
          Job.Entries.push_back(StartOf(FSheet, Piece));
        }
      } else {
        Job.Entries = {Contour.Chain.First().P1, Contour.Chain.Last().P4};
      }
      FJobs.push_back(std::move(Job));
    }
  }

  void MakeIndexes() {
    for (int I = 0; I < Count(); ++I) {
      At(I).FirstOfPort = FPorts[At(I).Port].Append(At(I), I);
      if (At(I).Group >= 0) At(I).FirstOfGroup = FGroups[At(I).Group].Append(At(I), I);
    }
    for (auto* const Indexes : {&FPorts, &FGroups}) {
      for (auto& [Key, Entries] : *Indexes) {
        Entries.Index = std::make_unique<TNearestEnds>(Entries.Places);
      }
    }
  }

  void BlockFigures() {
    const auto Size = static_cast<std::size_t>(FNesting.Count());
    FFigures.resize(Size);
    for (int Figure = 0; Figure < FNesting.Count(); ++Figure) {
      if (FNesting.Parent(Figure) >= 0) ++FigureAt(FNesting.Parent(Figure)).OpenInside;
    }
    for (int I = 0; I < Count(); ++I) {
      for (const int Figure : At(I).Figures) {
        FigureAt(Figure).Jobs.push_back(I);
        ++FigureAt(Figure).JobsLeft;
        if (FigureAt(Figure).OpenInside > 0) ++At(I).BlockingFigures;
      }
    }
  }

  void Switch(int Number, bool IsOn) {
    const TJob& Job = At(Number);
    for (int I = 0; I < static_cast<int>(Job.Entries.size()); ++I) {
      FPorts[Job.Port].Index->Switch(Job.FirstOfPort + I, IsOn);
      if (Job.Group >= 0) FGroups[Job.Group].Index->Switch(Job.FirstOfGroup + I, IsOn);
    }
  }

  struct TChoice {
    int Job;
    int Entry;  // of the job
  };

  TChoice Next() {
    if (FGroup >= 0) {
      const TEntries& Group = FGroups[FGroup];
      const int Place = Group.Index->Nearest(FHead);
      const auto I = static_cast<std::size_t>(Place);
      if (Place >= 0 && Group.Places[I].DistanceTo(FHead) <= MaxConnectDistance) {
        return {Group.Jobs[I], Place - At(Group.Jobs[I]).FirstOfGroup};
      }
    }
    int Place = FPorts[FPort].Index ? FPorts[FPort].Index->Nearest(FHead) : -1;
    for (auto Port = FPorts.begin(); Place < 0 && Port != FPorts.end(); ++Port) {
      if (!Port->second.Index) continue;
      Place = Port->second.Index->Nearest(FHead);
      if (Place >= 0) FPort = Port->first;
    }
    // Something is free always: the levels of what blocks a job are below its own.
    AssertThat(Place >= 0, "examples/sheet_planner/Ordering");
    const int Job = FPorts[FPort].Jobs[static_cast<std::size_t>(Place)];
    return {Job, Place - At(Job).FirstOfPort};
  }

  void Cut(const TChoice& Choice) {
    const TJob& Job = At(Choice.Job);
    Switch(Choice.Job, false);
    const int Index = Job.Step.Index;
    if (Job.Step.Kind == TStepKind::Pass) {
      if (Choice.Entry == 1) PassAt(Index).ReverseDir();
      FHead = PassAt(Index).EndPoint();
    } else if (Job.Step.Kind == TStepKind::Circle) {
      FPlan.Circles[Index]->SetPathStart(FHead);
      FHead = FPlan.Circles[Index]->GetPathStart();
    } else {
      TOrdinaryContour& Contour = ContourAt(Index);
      Start(Contour, Choice.Entry);
      FHead = Contour.Chain.Last().P4;
    }
    FGroup = Job.Group;
    FPlan.Order.push_back(Job.Step);
    for (const int Figure : Job.Figures) {
      if (--FigureAt(Figure).JobsLeft == 0) Free(FNesting.Parent(Figure));
    }
  }

  void Start(TOrdinaryContour& Contour, int Entry) {
    if (Entry == 0) return;
    std::vector<TContourPiece>& Pieces = Contour.Pieces;
    if (Contour.IsClosed) {
      std::rotate(Pieces.begin(), Pieces.begin() + Entry, Pieces.end());
    } else {
      std::reverse(Pieces.begin(), Pieces.end());
      for (TContourPiece& Piece : Pieces) Piece.IsReversed = !Piece.IsReversed;
    }
    Contour.Chain = ChainOf(FSheet, Pieces);
  }

  /// One figure less inside `Figure`.
  void Free(int Figure) {
    if (Figure < 0 || --FigureAt(Figure).OpenInside > 0) return;
    for (const int Job : FigureAt(Figure).Jobs) {
      if (--At(Job).BlockingFigures == 0) Switch(Job, true);
    }
  }

  /// The lists of the plan in cutting order too.
  void Permute() {
    std::vector<TOwningFlyCurves> Passes;
    std::vector<int> GroupOfPass;
    std::vector<TOrdinaryContour> Contours;
    std::vector<TFlyCurve*> Circles(FPlan.Circles.begin(), FPlan.Circles.end());
    for (int I = FPlan.Circles.Count() - 1; I >= 0; --I) (void)FPlan.Circles.Extract(I).release();
    for (TPlanStep& Step : FPlan.Order) {
      const auto Old = static_cast<std::size_t>(Step.Index);
      if (Step.Kind == TStepKind::Pass) {
        Step.Index = static_cast<int>(Passes.size());
        Passes.push_back(std::move(FPlan.Passes[Old]));
        GroupOfPass.push_back(FPlan.GroupOfPass[Old]);
      } else if (Step.Kind == TStepKind::Circle) {
        Step.Index = FPlan.Circles.Count();
        FPlan.Circles.Add(std::unique_ptr<TFlyCurve>(Circles[Old]));
      } else {
        Step.Index = static_cast<int>(Contours.size());
        Contours.push_back(std::move(FPlan.Contours[Old]));
      }
    }
    FPlan.Passes = std::move(Passes);
    FPlan.GroupOfPass = std::move(GroupOfPass);
    FPlan.Contours = std::move(Contours);
  }

  struct TFigure {
    std::vector<int> Jobs;
    int JobsLeft = 0;
    int OpenInside = 0;  // figures directly inside that are not cut yet
  };
  TFigure& FigureAt(int Figure) { return FFigures[static_cast<std::size_t>(Figure)]; }

  const TSheet& FSheet;
  const TNesting& FNesting;
  TPlan& FPlan;
  std::vector<TJob> FJobs;
  std::map<int, TEntries> FPorts;
  std::map<int, TEntries> FGroups;
  std::vector<TFigure> FFigures;
  TPoint2D FHead;
  int FPort = 0;
  int FGroup = -1;
};

}  // namespace

void OrderPlan(const TSheet& Sheet, const TNesting& Nesting, TPlan& Plan,
               const TProgressEvent& Progress) {
  TOrderer(Sheet, Nesting, Plan).Run(Progress);
}

}  // namespace sheet_planner
