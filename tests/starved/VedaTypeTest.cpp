#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "geometryAlgo/VedaType.h"
#include "tests/starved/Starve.h"
#include "tests/support/Generate.h"
#include "tests/support/TempFile.h"

namespace tarnalgo::test {
namespace {

/// A closed contour with repeated points, straight runs, and a vertex where it crosses itself.
TVPolyline2D Ragged(int Count) {
  TVPolyline2D Result;
  for (int I = 0; I < Count; ++I) {
    const double Angle = 2 * kFullTurn * I / Count;
    Result.Add({I % 3 * 1e-7 + 10 * std::cos(Angle), (I % 5) * 0.01 + 7 * std::sin(Angle)});
    if (I % 4 == 0) Result.Add(Result.Last());
    if (I % 6 == 0) Result.Add(Result.Last() + TPoint2D(0.5, 0.0));
  }
  Result.ConnectHeadTail();
  return Result;
}

const TVPolyline2D kRing(TVRect2D({0, 0}, {10, 5}));
const TVPolyline2D kOpen{{0, 0}, {4, 0}, {4, 4}, {2, -2}};

TVPolyline2DList Lines() {
  TVPolyline2DList List;
  for (int I = 0; I < 12; ++I) {
    const double X = I * 2.0;
    List.Add(
        std::make_unique<TVPolyline2D>(TVPolyline2D{{X, 0}, {X + 1, I % 3 * 1.0}, {X + 2, 0}}));
    if (I % 4 == 0) List.Add(List.Last()->Clone());
  }
  List.Add(kRing.Clone());
  return List;
}

TEST(StarvedVedaType, PolylineEdits) {
  using TLine = TVPolyline2D;
  const TLine Subjects[] = {Ragged(40), kRing, kOpen, {{0, 0}, {5, 0}, {5, 5}, {0, 5}}};
  for (const TLine& Line : Subjects) {
    const auto On = [&Line](const char* Name, auto Run) { StarveOn(Name, Line, Run); };
    On("Add", [](TLine& L) { return L.Add({1, 2}); });
    On("AddRange", [](TLine& L) { L.AddRange(L); });
    On("Insert", [](TLine& L) { L.Insert(1, L.Last()); });
    On("Assign", [](TLine& L) { L.Assign(kRing); });
    On("Snip", [](TLine& L) { return L.Snip(1, 2); });
    On("DeleteNeighbourClosed", [](TLine& L) { L.DeleteNeighbourClosed(); });
    On("CollinearSmooth", [](TLine& L) { L.CollinearSmooth(0.01); });
    On("Simplify", [](TLine& L) { L.Simplify(0.5); });
    On("ConnectHeadTail", [](TLine& L) { L.ConnectHeadTail(); });
    On("Trim", [](TLine& L) { return L.Trim(); });
    On("assignment", [](TLine& L) { L = kOpen; });
    for (const TLine& Other : {TLine{{2, -2}, {9, 9}}, TLine{{9, 9}, {2, -2}},
                               TLine{{8, 8}, {0, 0}}, TLine{{0, 0}, {8, 8}}}) {
      On("TryConnect", [&Other](TLine& L) { return L.TryConnect(Other); });
    }
    On("turns", [](TLine& L) {
      L.SetIsClockwise(true);
      L.Rotate(0.3);
      L.YMirror();
      L.Zoom(2.0);
      L.RoundTo(3);
    });
  }
}

TEST(StarvedVedaType, PolylineQuestions) {
  struct TSubject {
    TVPolyline2D Line = Ragged(40);
    std::vector<TPoint2D> Points{{9, 9}};
    std::vector<TVLine2D> Lines{{{0, 0}, {1, 1}}};
    std::vector<double> Params{0.5, 3.0, 0.5, 99.0, 2.0, 3.0};
    auto State() const { return std::tie(Line, Points, Lines, Params); }
  };
  const auto Make = [] { return std::make_unique<TSubject>(); };
  const TVPolyline2D Other = kRing;
  const TVLine2D Cut({-20, 0}, {20, 0});
  Starve("CrossWith", Make,
         [&](TSubject& S) { return S.Line.CrossWith(Other, S.Points, S.Lines); });
  Starve("CrossWith itself", Make,
         [&](TSubject& S) { return S.Line.CrossWith(S.Line, S.Points, S.Lines); });
  Starve("CrossWith a line", Make,
         [&](TSubject& S) { return S.Line.CrossWith(Cut, S.Points, S.Lines); });
  Starve("RemoveDuplicate", Make, [](TSubject& S) { S.Line.RemoveDuplicate(S.Params); });
  Starve("questions", Make, [&](TSubject& S) {
    TPoint2D P;
    const bool Crosses = S.Line.CrossWithLastPt(Other, P) && S.Line.NearestCrossPoint(Cut, P, P);
    return std::tuple(Crosses, P, S.Line.IsSelfIntersect(), S.Line.RelationWithPoint({1, 1}),
                      S.Line.RelationWith(Other), S.Line.IsEqualTo(S.Line),
                      S.Line.IsEqualToReverse(Other), S.Line.IsRect(), S.Line.IsConvexPolygon());
  });
  Starve("new ones", Make, [](TSubject& S) {
    return std::tuple(S.Line.ConvexHull(), S.Line.SubCurve(0.5, 3.5), S.Line.Clone(), S.Line.New(),
                      S.Line.ToString(), S.Line.ToTPoint2DList(), S.Line.Gravity(),
                      S.Line.CalcTravelPos(9.0), S.Line.CalcParamByPoint({1, 1}));
  });
}

TEST(StarvedVedaType, PolylineLists) {
  using TList = TVPolyline2DList;
  for (const bool Owns : {true, false}) {
    static const TList Members = Lines();
    struct TSubject {
      explicit TSubject(bool Owns) : List(Owns), Backing(Lines()) {
        List.Reserve(Backing.Count());
        while (Owns && !Backing.IsEmpty()) List.Insert(0, Backing.Extract(Backing.Count() - 1));
        for (TVPolyline2D* Item : Backing) List.Add(Item);
      }
      TList List;
      TList Backing;
      auto State() const { return std::tie(List, Backing); }
    };
    const auto Make = [Owns] { return std::make_unique<TSubject>(Owns); };
    Starve("DeleteRepeat", Make, [](TSubject& S) { return S.List.DeleteRepeat(); });
    Starve("Connect", Make, [](TSubject& S) { return S.List.Connect(); });
    Starve("ConnectOptimize", Make, [](TSubject& S) { return S.List.ConnectOptimize(); });
    Starve("TryConnectByOrder", Make, [](TSubject& S) { return S.List.TryConnectByOrder(); });
    Starve("SortByArea", Make, [](TSubject& S) { S.List.SortByArea(); });
    Starve("new ones", Make, [](TSubject& S) {
      return std::tuple(S.List.ConnectPolylines(), S.List.Clone(), S.List.New());
    });
  }
}

/// Lines on a straight way, points, an arc, a straight Bezier and a true one.
TLABPolyline Chain() {
  TLABPolyline Chain;
  for (int I = 0; I < 6; ++I) Chain.Add({{I * 1.0, 0}, {I + 1.0, 0}});
  Chain.Add({{6, 0}, {6, 0}});
  Chain.Add({{6, 0}, {6, 4}, {6, 2}, 1.0});
  Chain.Add({{6, 4}, {5, 4}, {4, 4}, {3, 4}});
  Chain.Add({{3, 4}, {2, 8}, {1, 1}, {0, 4}});
  Chain.ConnectHeadTail();
  return Chain;
}

TEST(StarvedVedaType, SegmentChains) {
  using TChain = TLABPolyline;
  const TChain Value = Chain();
  const auto On = [&Value](const char* Name, auto Run) { StarveOn(Name, Value, Run); };
  On("Add", [](TChain& C) { return C.Add({{9, 9}, {8, 8}}); });
  On("AddRange", [](TChain& C) { C.AddRange(C); });
  On("AddRange", [](TChain& C) { C.AddRange(Chain()); });
  On("Insert", [](TChain& C) { C.Insert(0, C.Last()); });
  On("Replace", [](TChain& C) { C.Replace(0, C.Last()); });
  On("MergeCollinearLines", [](TChain& C) { C.MergeCollinearLines(); });
  On("CollinearSmooth", [](TChain& C) { C.CollinearSmooth(); });
  On("turns", [](TChain& C) {
    C.SetIsClockwise(true);
    C.Rotate(0.3);
    C.YMirror();
    C.Reverse();
  });
  On("questions", [](TChain& C) {
    const TShapeRelation Relation = C.RelationWithPoint({1, 1});
    const TVPolyline2D Sample = C.SampleWithoutClone(0.1);  // until the next question
    return std::tuple(Relation, Sample, C.Sample(), C.Gravity(), C.GetLines(), C.ToGeCurve2D(),
                      C.ToString(), TChain(*C.ToGeCurve2D()), C.Clone());
  });
  struct TSubject {
    TChain Chain = test::Chain();
    std::vector<TPoint2D> Points{{9, 9}};
    std::vector<TVLine2D> Lines{{{0, 0}, {1, 1}}};
    std::vector<TVArc2D> Arcs;
    std::vector<TBezierSegment2D> Beziers;
    auto State() const { return std::tuple(Chain, Points, Lines, Arcs.size(), Beziers); }
  };
  const auto Make = [] { return std::make_unique<TSubject>(); };
  Starve("CrossWithSegLine", Make, [](TSubject& S) {
    return S.Chain.CrossWithSegLine({{-1, 0}, {9, 0}}, S.Points, S.Lines);
  });
  for (int I = 0; I < Value.Count(); ++I) {
    for (int J = 0; J < Value.Count(); ++J) {
      Starve("CrossWithLABSegline", Make, [I, J](TSubject& S) {
        return S.Chain[I].CrossWithLABSegline(S.Chain[J].Rotate(J == 9 ? 1e-7 : 0.0), S.Points,
                                              S.Lines, S.Arcs, S.Beziers);
      });
    }
  }
  TLABSegline Segline = Value[9];
  StarveOn("a segment", Segline,
           [](TLABSegline& S) { return std::tuple(S.Sample(0.1), S.ToGeCurve2D(), S.Length()); });
}

TEST(StarvedVedaType, BezierCrossings) {
  const TBezierSegment2D Wave({0, 0}, {4, 9}, {6, -9}, {10, 1});
  const TBezierSegment2D Straight({0, 0}, {20, 0}, {-9, 0}, {10, 0});
  struct TSubject {
    std::vector<TPoint2D> Points{{9, 9}};
    std::vector<TVLine2D> Lines;
    std::vector<double> Params{0.5};
    std::vector<TBezierSegment2D> Overlaps;
    std::vector<TGeometryUtils::TCrossRec> List{{{9, 9}, 0.5, 0.0}};
    std::vector<TGeometryUtils::TStretch> Stretches{{0.1, 0.2}};
    auto State() const {
      return std::tuple(Points, Lines, Params, Overlaps, List.size(), Stretches);
    }
  };
  using TUtils = TGeometryUtils;
  const auto Make = [] { return std::make_unique<TSubject>(); };
  const TVArc2D Arc({5, 0}, {9, 0}, {1, 0}, true);
  for (const TBezierSegment2D& A : {Wave, Straight}) {
    Starve("BezierCrossWithSegline", Make, [&](TSubject& S) {
      TUtils::BezierCrossWithSegline(A, {{-1, 0}, {11, 0}}, 1e-6, S.Points, S.Lines, &S.Params);
    });
    Starve("BezierCrossWithArc", Make,
           [&](TSubject& S) { TUtils::BezierCrossWithArc(A, Arc, 1e-6, S.Points, S.Params); });
    for (const TBezierSegment2D& B : {Wave, Straight, Wave.Reversed()}) {
      Starve("BezierCrossWithBezier", Make, [&](TSubject& S) {
        TUtils::BezierCrossWithBezier(A, B, 1e-6, S.Points, S.Lines, S.Overlaps);
      });
      Starve("DoBezierCrossWithBezier", Make, [&](TSubject& S) {
        TUtils::DoBezierCrossWithBezier(A, 0, 1, B, 0, 1, 8, 1e-6, S.List, S.Stretches);
      });
    }
    Starve("DoBezierCrossWithSegline", Make, [&](TSubject& S) {
      TUtils::DoBezierCrossWithSegline(A, 0, 1, {{-1, 0}, {11, 0}}, 8, 1e-6, S.List, S.Stretches);
    });
  }
  Starve(
      "RemoveCloseCrossPts",
      [&] {
        auto Subject = std::make_unique<TSubject>();
        for (int I = 9; I > 0; --I) Subject->List.push_back({{I / 2 * 1.0, 0}, I * 0.1, I * 1e-7});
        return Subject;
      },
      [](TSubject& S) { TUtils::RemoveCloseCrossPts(S.List, S.Points, S.Params, 1e-6); });
  StarveOn("SplitBezier", Wave, [](TBezierSegment2D& B) {
    return TUtils::SplitBezier(B, {0.7, 0.2, 0.2, 3.0, 0.5});
  });
}

TVHPolygon Plate() {
  TVHPolygon Result(false);
  Result.Add(std::make_unique<TVPolyline2D>(TVRect2D({0, 0}, {100, 50})));
  for (int I = 0; I < 5; ++I) {
    const TPoint2D Corner(I * 20 + 1, 5);
    Result.Add(std::make_unique<TVPolyline2D>(TVRect2D(Corner, Corner + TPoint2D(9, 30))));
  }
  return Result;
}

TVHPolygonList Plates() {
  TVHPolygonList List;
  for (int I = 0; I < 3; ++I) {
    auto Member = std::make_unique<TVHPolygon>(Plate());
    Member->Translate({I * 60.0, 0});
    List.Add(std::move(Member));
  }
  return List;
}

TEST(StarvedVedaType, Regions) {
  const auto Make = [] { return std::make_unique<TVHPolygon>(Plate()); };
  using TRegion = TVHPolygon;
  Starve("Add", Make, [](TRegion& R) { R.Add(kRing.Clone()); });
  Starve("Insert", Make, [](TRegion& R) { R.Insert(0, kRing.Clone()); });
  Starve("SetItem", Make, [](TRegion& R) { R.SetItem(0, kRing.Clone()); });
  Starve("turns", Make, [](TRegion& R) {
    R.SetIsClockwise(true);
    R.YMirror();
    R.Delete(0);
  });
  Starve("questions", Make, [](TRegion& R) {
    return std::tuple(R.Clone(), R.Gravity(), R.IsEqualTo(Plate()), R.RelationWithPoint({1, 1}),
                      R.IsCrossWith(Plate()), TShapeRelationUtils::CalcRegionRelation(R, Plate()),
                      TLABHPolygon(R));
  });
  const auto MakeList = [] { return std::make_unique<TVHPolygonList>(Plates()); };
  using TList = TVHPolygonList;
  Starve("Add", MakeList, [](TList& L) { L.Add(std::make_unique<TRegion>(Plate())); });
  Starve("SortByArea", MakeList, [](TList& L) { L.SortByArea(); });
  Starve("SortByRegArea", MakeList, [](TList& L) { L.SortByRegArea(); });
  Starve("questions", MakeList, [](TList& L) {
    return std::tuple(L.Clone(), L.IntersectSelf(), L.IsCrossWith(Plates()), TLABHPolygonList(L));
  });
  const auto MakeChains = [] {
    auto List = std::make_unique<TLABHPolygonList>(Plates());
    for (TLABHPolygon* Item : *List) Item->Add(std::make_unique<TLABPolyline>(Chain()));
    return List;
  };
  Starve("CollinearSmooth", MakeChains, [](TLABHPolygonList& L) { L.CollinearSmooth(); });
  Starve("questions", MakeChains, [](TLABHPolygonList& L) {
    return std::tuple(L.Clone(), L.First()->Gravity(), L.First()->RelationWithPoint({1, 1}));
  });
  Starve(
      "CollinearSmooth",
      [] {
        auto List = std::make_unique<TLABPolylineList>();
        for (int I = 0; I < 3; ++I) List->Add(std::make_unique<TLABPolyline>(Chain()));
        return List;
      },
      [](TLABPolylineList& L) { L.CollinearSmooth(); });
}

// Failing writers must not have emptied the file.
TEST(StarvedVedaType, Files) {
  struct TSubject {
    TTempFile File;
    TSubject() { File.Write("before"); }
    std::string State() const { return File.Read(); }
  };
  const auto Make = [] { return std::make_unique<TSubject>(); };
  Starve("a polyline", Make, [](TSubject& S) { kRing.WriteToFile(S.File.Path()); });
  Starve("a list", Make, [](TSubject& S) { Lines().WriteToFile(S.File.Path()); });
  Starve("a chain", Make, [](TSubject& S) { Chain().WriteToFile(S.File.Path()); });
}

TVRect2D RandomBox(std::mt19937& Random) {
  const TPoint2D Corner = RandomPoint(Random, 0, 100);
  return {Corner, Corner + RandomPoint(Random, 0, 5)};
}

// The nodes themselves are compared: a tree that was split and holds the same items is another one.
template <class T>
void DescribeNode(const TRTreeNode<T>& Node, std::vector<std::string>& Text) {
  Text.push_back(TextOf(std::tuple(Node.ChildCount(), Node.Range().Left, Node.Range().Top)));
  for (int I = 0; I < Node.ChildCount(); ++I) DescribeNode(*Node.Child(I), Text);
}

TEST(StarvedVedaType, GenericRTree) {
  struct TSubject {
    TSubject(int MaxChildren, int Count) : Tree(MaxChildren) {
      std::mt19937 Random(7);
      for (int I = 0; I < Count; ++I) {
        Tree.Insert("item of the tree, not short: " + std::to_string(I), RandomBox(Random));
      }
    }
    TRTree<std::string> Tree;
    std::vector<std::string> Found{"found before"};
    auto State() const {
      std::vector<std::string> Nodes;
      if (Tree.Root()) DescribeNode(*Tree.Root(), Nodes);
      return std::tuple(Tree.GetAllData(), Nodes, Found);
    }
  };
  // Counts at which insertions split the root, leaves, nothing.
  for (const int MaxChildren : {2, 3, 8, 20}) {
    for (const int Count : {0, 1, MaxChildren, 50, 64, 65, 71}) {
      SCOPED_TRACE(testing::Message() << MaxChildren << " children, " << Count << " items");
      const auto Make = [=] { return std::make_unique<TSubject>(MaxChildren, Count); };
      Starve("Insert", Make, [](TSubject& S) {
        S.Tree.Insert("one more item for this tree to hold", {{50, 50}, {51, 51}});
      });
      Starve("Remove", Make, [](TSubject& S) {
        if (S.Tree.Count() > 0) S.Tree.Remove(std::string(S.Tree.GetAllData().back()));
      });
      Starve("Search", Make, [](TSubject& S) {
        S.Tree.Search({{20, 20}, {70, 70}}, S.Found);
        return S.Tree.MayIntersect({{1, 1}, {2, 2}});
      });
    }
  }
  Starve(
      "a life", [] { return std::make_unique<int>(0); }, [](int&) { TSubject(8, 100); });
}

TEST(StarvedVedaType, SplitOfANodeByHand) {
  using TNode = TRTreeNode<int>;
  struct TSubject {
    std::vector<std::unique_ptr<TNode>> Nodes;
    TNode* Root = nullptr;
    TSubject() {
      Nodes.reserve(50);
      for (int I = 0; I < 21; ++I) {
        const TPoint2D P(I * 7 % 20, I);
        Nodes.push_back(I ? std::make_unique<TNode>(I, TVRect2D(P, P)) : std::make_unique<TNode>());
        if (I > 0) Nodes[0]->AddChildNode(Nodes.back().get());
      }
      Root = Nodes[0].get();
    }
    int State() const { return Nodes[0]->ChildCount(); }
  };
  Starve(
      "Split", [] { return std::make_unique<TSubject>(); },
      [](TSubject& S) {
        S.Root->Split({{0, 0}, {1, 1}});
        TNode* const Top = S.Root->Parent();
        S.Nodes.emplace_back(Top);
        S.Nodes.emplace_back(Top->Child(1));
      });
}

TEST(StarvedVedaType, ObjectRTree) {
  static int Items[60];
  struct TSubject {
    explicit TSubject(int Count) {
      std::mt19937 Random(9);
      for (int I = 0; I < Count; ++I) {
        Root = TRRTree2D::Insert(std::make_unique<TRRTree2D>(&Items[I], RandomBox(Random)),
                                 std::move(Root));
      }
    }
    std::unique_ptr<TRRTree2D> Root;
    TRList Found;
    auto State() const {
      TRList All;
      if (Root) Root->PickUpContents({{-1, -1}, {200, 200}}, All);
      std::vector<long> Numbers;
      for (void* Item : All.PickUpAllContents()) Numbers.push_back(static_cast<int*>(Item) - Items);
      std::sort(Numbers.begin(), Numbers.end());
      return std::pair(Numbers, Found.Count());
    }
  };
  for (const int Count : {0, 1, 4, 12, 17, 40, 50, 53}) {
    SCOPED_TRACE(Count);
    const auto Make = [=] { return std::make_unique<TSubject>(Count); };
    Starve("Insert", Make, [](TSubject& S) {
      auto Entry = std::make_unique<TRRTree2D>(&Items[59], TVRect2D({50, 50}, {51, 51}));
      S.Root = TRRTree2D::Insert(std::move(Entry), std::move(S.Root));
    });
    Starve("PickUpContents", Make, [](TSubject& S) {
      if (S.Root) S.Root->PickUpContents({{20, 20}, {70, 70}}, S.Found);
    });
    Starve("PickUpContents of a list", Make, [](TSubject& S) {
      T2DRList List;
      if (S.Root) S.Root->PickUpContents({{-1, -1}, {200, 200}}, List);
      List.PickUpContents({{20, 20}, {70, 70}}, S.Found);
    });
    Starve("GetHeight", Make, [](TSubject& S) { return S.Root ? S.Root->GetHeight() : 0; });
    Starve("Delete", Make, [](TSubject& S) {
      if (!S.Root) return;
      TRRTree2D* Entry = S.Root.get();
      while (Entry->ChildCount() > 0) Entry = Entry->Child(0);
      Entry->Delete();
    });
    Starve("DestroyAll", Make, [](TSubject& S) {
      if (S.Root) S.Root->DestroyAll();
    });
  }
}

}  // namespace
}  // namespace tarnalgo::test
