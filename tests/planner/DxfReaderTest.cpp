#include "examples/sheet_planner/DxfReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "examples/sheet_planner/BadInput.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

/// Groups as "code value code value ...": each blank is a line end, "_" a blank, so that a test
/// shows a file on a line.
std::string Lines(std::string Text, const std::string& LineEnd = "\n") {
  std::string Result;
  for (const char C : Text) {
    if (C == ' ') {
      Result += LineEnd;
    } else {
      Result += C == '_' ? ' ' : C;
    }
  }
  return Result + LineEnd;
}

std::string Entities(const std::string& Groups) {
  return "0 SECTION 2 ENTITIES " + Groups + " 0 ENDSEC 0 EOF";
}

TDrawing Read(const std::string& Groups) {
  return ReadDxf(Lines(Groups), 0.01);
}

TDrawing ReadEntities(const std::string& Groups) {
  return Read(Entities(Groups));
}

/// A block of that content and an entity section.
TDrawing ReadBlock(const std::string& Content, const std::string& Groups) {
  return Read("0 SECTION 2 BLOCKS 0 BLOCK 8 0 2 B 70 0 10 1 20 0 " + Content +
              " 0 ENDBLK 0 ENDSEC " + Entities(Groups));
}

std::string Refusal(const std::string& Bytes) {
  try {
    ReadDxf(Bytes, 0.01);
    return "read";
  } catch (const EBadInput& Error) {
    return Error.what();
  }
}

void ExpectAt(const TPoint2D& Expected, const TPoint2D& Actual) {
  EXPECT_TRUE(Expected.Equals(Actual, 1e-9))
      << Actual.X << ", " << Actual.Y << " for " << Expected.X << ", " << Expected.Y;
}

constexpr const char* kLine = "0 LINE 8 0 10 1 20 2 11 4 21 6";

TEST(ReadDxf, ReadsEachKind) {
  const TDrawing Drawing = ReadEntities(
      "0 LINE 8 Cuts 10 1 20 2 30 0 11 4 21 6 31 0 "
      "0 ARC 8 Cuts 10 0 20 0 40 2 50 270 51 90 "
      "0 CIRCLE 8 Holes 10 5 20 6 40 1.5 "
      "0 ELLIPSE 8 0 10 0 20 0 11 4 21 0 40 0.5 41 0 42 6.283185307179586");
  ASSERT_EQ(1U, Drawing.Edges.size());
  ExpectAt({4, 6}, Drawing.Edges[0].Line.EndPoint);
  ASSERT_EQ(1U, Drawing.Arcs.size());
  ExpectAt({0, -2}, Drawing.Arcs[0].Arc.StartPoint());
  ExpectAt({2, 0}, Drawing.Arcs[0].Arc.PointAtParam(0.5));
  ASSERT_EQ(1U, Drawing.Circles.size());
  EXPECT_EQ("Holes", Drawing.Layers[static_cast<std::size_t>(Drawing.Circles[0].Layer)]);
  ASSERT_EQ(1U, Drawing.Curves.size());
  for (const TPoint2D& P : Drawing.Curves[0].Points) {
    EXPECT_NEAR(1.0, P.X * P.X / 16 + P.Y * P.Y / 4, 1e-12);
  }
  EXPECT_EQ((TCensus{{"ARC", 1}, {"CIRCLE", 1}, {"ELLIPSE", 1}, {"LINE", 1}}), Drawing.Read);
}

TEST(ReadDxf, ReadsPolylinesWithBulges) {
  // A slot: two straight sides, two half turns.
  const char* const Texts[] = {
      "0 LWPOLYLINE 8 0 90 4 70 1 10 0 20 0 10 10 20 0 42 1 10 10 20 4 10 0 20 4 42 1",
      "0 POLYLINE 8 0 66 1 70 1 0 VERTEX 8 0 10 0 20 0 0 VERTEX 8 0 10 10 20 0 42 1 "
      "0 VERTEX 8 0 10 10 20 4 0 VERTEX 8 0 10 0 20 4 42 1 0 SEQEND",
      // The SEQEND is missing, a frame point of a curve fit and a repeated vertex are not drawn.
      "0 POLYLINE 8 0 66 1 70 1 0 VERTEX 8 0 10 0 20 0 0 VERTEX 8 0 10 99 20 99 70 16 "
      "0 VERTEX 8 0 10 10 20 0 42 1 0 VERTEX 8 0 10 10 20 4 0 VERTEX 8 0 10 10 20 4 "
      "0 VERTEX 8 0 10 0 20 4 42 1",
  };
  for (const char* const Text : Texts) {
    SCOPED_TRACE(Text);
    const TDrawing Drawing = ReadEntities(Text);
    ASSERT_EQ(2U, Drawing.Edges.size());
    ASSERT_EQ(2U, Drawing.Arcs.size());
    ExpectAt({10, 0}, Drawing.Arcs[0].Arc.StartPoint());
    ExpectAt({12, 2}, Drawing.Arcs[0].Arc.PointAtParam(0.5));
    ExpectAt({-2, 2}, Drawing.Arcs[1].Arc.PointAtParam(0.5));
  }
  const TDrawing Open = ReadEntities("0 LWPOLYLINE 8 0 90 3 70 0 10 0 20 0 10 1 20 0 10 1 20 1");
  EXPECT_EQ(2U, Open.Edges.size());
  const TDrawing Circle = ReadEntities("0 LWPOLYLINE 8 0 90 2 70 1 10 -3 20 0 42 1 10 3 20 0 42 1");
  ASSERT_EQ(1U, Circle.Circles.size());
  EXPECT_NEAR(3.0, Circle.Circles[0].Circle.Radius, 1e-12);
}

TEST(ReadDxf, ReadsSplines) {
  const std::string Controls = "10 0 20 0 10 0 20 10 10 10 20 10 10 10 20 0";
  const std::string Knots = "40 0 40 0 40 0 40 0 40 1 40 1 40 1 40 1";
  const TDrawing Cubic =
      ReadEntities("0 SPLINE 8 0 70 8 71 3 72 8 73 4 74 0 " + Knots + " " + Controls);
  ASSERT_EQ(1U, Cubic.Curves.size());
  ExpectAt({10, 0}, Cubic.Curves[0].Points.back());
  const auto Top = std::max_element(Cubic.Curves[0].Points.begin(), Cubic.Curves[0].Points.end(),
                                    [](const TPoint2D& A, const TPoint2D& B) { return A.Y < B.Y; });
  EXPECT_NEAR(7.5, Top->Y, 0.01);
  const TDrawing Straight = ReadEntities("0 SPLINE 8 0 70 8 71 3 72 8 73 4 74 0 " + Knots +
                                         " 10 0 20 0 10 1 20 1 10 2 20 2 10 3 20 3");
  EXPECT_EQ(1U, Straight.Edges.size());
  const TDrawing Weighted = ReadEntities(
      "0 SPLINE 8 0 70 12 71 2 72 6 73 3 74 0 40 0 40 0 40 0 40 1 40 1 40 1 "
      "41 1 41 0.7071067811865476 41 1 10 1 20 0 10 1 20 1 10 0 20 1");
  for (const TPoint2D& P : Weighted.Curves.at(0).Points) EXPECT_NEAR(1.0, P.Mag(), 1e-9);
  const TDrawing Fitted =
      ReadEntities("0 SPLINE 8 0 70 8 71 3 72 0 73 0 74 3 11 0 21 0 11 5 21 5 11 10 21 0");
  ExpectAt({0, 0}, Fitted.Curves.at(0).Points.front());
  ExpectAt({10, 0}, Fitted.Curves.at(0).Points.back());
  const TDrawing Bad =
      ReadEntities(std::string(kLine) + " 0 SPLINE 8 0 70 8 71 3 73 4 " + Controls);
  EXPECT_EQ((TCensus{{"SPLINE (bad degree, knots or weights)", 1}}), Bad.Skipped);
}

TEST(ReadDxf, PlacesBlocks) {
  const std::string Content = "0 LINE 8 0 10 1 20 0 11 3 21 0 0 LINE 8 Own 10 1 20 0 11 1 21 1";
  const TDrawing Turned = ReadBlock(Content, "0 INSERT 8 Outer 2 B 10 10 20 20 41 2 42 3 50 90");
  ASSERT_EQ(2U, Turned.Edges.size());
  ExpectAt({10, 20}, Turned.Edges[0].Line.StartPoint);  // the base point
  ExpectAt({10, 24}, Turned.Edges[0].Line.EndPoint);
  ExpectAt({7, 20}, Turned.Edges[1].Line.EndPoint);
  EXPECT_EQ((std::vector<std::string>{"Outer", "Own"}), Turned.Layers);  // 0 is the reference's

  const TDrawing Array =
      ReadBlock(Content, "0 INSERT 8 0 2 B 10 0 20 0 50 90 70 3 71 2 44 10 45 100");
  ASSERT_EQ(12U, Array.Edges.size());
  ExpectAt({0, 20}, Array.Edges[4].Line.StartPoint);      // third column of the first row
  ExpectAt({-100, 20}, Array.Edges[10].Line.StartPoint);  // of the second
}

TEST(ReadDxf, PlacesArcsOfBlocks) {
  const std::string Content = "0 ARC 8 0 10 1 20 0 40 2 50 0 51 90 0 CIRCLE 8 0 10 1 20 0 40 1";
  const TDrawing Mirrored = ReadBlock(Content, "0 INSERT 8 0 2 B 10 0 20 0 41 -3 42 3");
  ASSERT_EQ(1U, Mirrored.Arcs.size());
  ExpectAt({-6, 0}, Mirrored.Arcs[0].Arc.StartPoint());
  ExpectAt({0, 6}, Mirrored.Arcs[0].Arc.EndPoint());
  EXPECT_LT(Mirrored.Arcs[0].Arc.SweepAngle, 0.0);
  EXPECT_NEAR(3.0, Mirrored.Circles.at(0).Circle.Radius, 1e-12);

  const TDrawing Stretched = ReadBlock(Content, "0 INSERT 8 0 2 B 10 0 20 0 41 2 42 1");
  EXPECT_TRUE(Stretched.Arcs.empty() && Stretched.Circles.empty());
  ASSERT_EQ(2U, Stretched.Curves.size());
  for (const TPoint2D& P : Stretched.Curves[1].Points) {
    EXPECT_NEAR(1.0, P.X * P.X / 4 + P.Y * P.Y, 1e-12);
  }
}

TEST(ReadDxf, MirrorsWhatIsSeenFromBelow) {
  const std::string Below = " 210 0 220 0 230 -1 ";
  const TDrawing Drawing =
      ReadEntities("0 ARC 8 0 10 5 20 0 40 1 50 0 51 90" + Below + "0 CIRCLE 8 0 10 7 20 1 40 1" +
                   Below + "0 LINE 8 0 10 1 20 0 11 2 21 0 210 0 220 0 230 -1");
  ExpectAt({-6, 0}, Drawing.Arcs.at(0).Arc.StartPoint());
  ExpectAt({-5, 1}, Drawing.Arcs.at(0).Arc.EndPoint());
  ExpectAt({-7, 1}, Drawing.Circles.at(0).Circle.Center);
  ExpectAt({1, 0}, Drawing.Edges.at(0).Line.StartPoint);  // lines are in world coordinates
}

TEST(ReadDxf, NestsBlocks) {
  const TDrawing Drawing = Read(
      "0 SECTION 2 BLOCKS 0 BLOCK 2 Inner 10 0 20 0 0 LINE 8 0 10 0 20 0 11 1 21 0 0 ENDBLK "
      "0 BLOCK 2 Outer 10 0 20 0 0 INSERT 8 0 2 Inner 10 5 20 0 50 90 0 TEXT 8 0 1 Hi 0 ENDBLK "
      "0 ENDSEC " +
      Entities("0 INSERT 8 L 2 Outer 10 100 20 0 41 2 42 2"));
  ASSERT_EQ(1U, Drawing.Edges.size());
  ExpectAt({110, 0}, Drawing.Edges[0].Line.StartPoint);
  ExpectAt({110, 2}, Drawing.Edges[0].Line.EndPoint);
  EXPECT_EQ((std::vector<std::string>{"L"}), Drawing.Layers);
  EXPECT_EQ((TCensus{{"TEXT", 1}}), Drawing.Skipped);
}

TEST(ReadDxf, TakesAnyLineEnds) {
  const std::string Groups = Entities(kLine);
  for (const char* const End : {"\n", "\r\n", "\r", "\r\r\n", " \n  "}) {
    EXPECT_EQ(1U, ReadDxf(Lines(Groups, End), 0.01).Edges.size());
  }
  EXPECT_EQ(1U, ReadDxf("\xEF\xBB\xBF" + Lines(Groups) + "\n\n\x1A\n", 0.01).Edges.size());
  EXPECT_EQ(1U, ReadDxf(Lines("999 a_comment " + Groups), 0.01).Edges.size());
}

TEST(ReadDxf, NamesWhatItLeavesOut) {
  // The DXF library would stop at a line this long.
  const std::string LongNumber = "0 LINE 8 0 10 0 20 0 11 " + std::string(1100, '0') + "1 21 1";
  const struct {
    std::string Groups;
    const char* Skipped;
  } Cases[] = {
      {"0 TEXT 8 0 1 Hi", "TEXT"},
      {"0 LINE 8 0 67 1 10 0 20 0 11 1 21 1", "LINE (paper space)"},
      {"0 LINE 8 0 60 1 10 0 20 0 11 1 21 1", "LINE (invisible)"},
      {"0 LINE 8 Off 10 0 20 0 11 1 21 1", "LINE (hidden layer)"},
      {"0 LINE 8 0 10 0 20 0 11 1", "LINE (incomplete)"},
      {"0 LINE 8 0 10 0 20 0 11 nan 21 1", "LINE (bad number)"},
      {"0 LINE 8 0 10 0 20 0 11 1e10 21 1", "LINE (bad number)"},
      {LongNumber, "LINE (bad number)"},
      {"0 CIRCLE 8 0 10 0 20 0 40 -1", "CIRCLE (no radius)"},
      {"0 CIRCLE 8 0 10 0 20 0 40 1 210 1 220 0 230 0", "CIRCLE (not in the plane)"},
      {"0 LWPOLYLINE 8 0 90 1 70 0 10 0 20 0", "POLYLINE (fewer than two vertices)"},
      {"0 POLYLINE 8 0 66 1 70 64 0 VERTEX 8 0 10 0 20 0 0 SEQEND", "POLYLINE (mesh)"},
      {"0 INSERT 8 0 2 Nowhere 10 0 20 0", "INSERT (no such block)"},
      {"0 \x01strange 8 0", "?strange"},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Groups);
    const TDrawing Drawing =
        Read("0 SECTION 2 TABLES 0 TABLE 2 LAYER 0 LAYER 2 Off 70 0 62 -7 0 ENDTAB 0 ENDSEC " +
             Entities(std::string(kLine) + " " + Case.Groups));
    EXPECT_EQ((TCensus{{Case.Skipped, 1}}), Drawing.Skipped);
    EXPECT_EQ((TCensus{{"LINE", 1}}), Drawing.Read);
  }
}

TEST(ReadDxf, RefusesWhatIsNoDrawing) {
  const struct {
    const char* Name;
    std::string Bytes;
    const char* Says;
  } Cases[] = {
      {"empty", "", "the file is empty"},
      {"binary DXF", std::string("AutoCAD Binary DXF\r\n\x1A\0", 22), "binary DXF"},
      {"DWG", "AC1027 and more", "DWG"},
      {"UTF-16",
       std::string("\xFF\xFE"
                   "0\0",
                   4),
       "UTF-16"},
      {"prose", "Dear sir,\nplease cut this.\n", "line 1 should be a group code"},
      {"shifted groups", Lines("0 SECTION 2 ENTITIES 0 LINE extra 10 0 20 0"), "line 7"},
      {"no entities section", Lines("0 SECTION 2 HEADER 0 ENDSEC 0 EOF"), "no ENTITIES section"},
      {"an empty drawing", Lines(Entities("999 nothing")), "the drawing is empty"},
      {"text only", Lines(Entities("0 TEXT 8 0 1 Hi 0 TEXT 8 0 1 Ho")), "skipped: TEXT 2"},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    const std::string Message = Refusal(Case.Bytes);
    EXPECT_NE(std::string::npos, Message.find(Case.Says)) << Message;
    EXPECT_EQ(std::string::npos, Message.find('\n'));
  }
}

TEST(ReadDxf, BelievesNoDeclaredCount) {
  const TDrawing Drawing = ReadEntities(
      "0 LWPOLYLINE 8 0 90 2000000000 70 1 10 0 20 0 10 1 20 0 10 1 20 1 "
      "0 LWPOLYLINE 8 0 90 -5 70 1 10 0 20 0 10 1 20 0 10 1 20 1 "
      "0 LWPOLYLINE 8 0 70 1 10 0 20 0 10 1 20 0 10 1 20 1 "
      "0 SPLINE 8 0 70 8 71 1 72 2000000000 73 1999999999 74 -1 "
      "40 0 40 0 40 1 40 2 40 2 10 0 20 0 10 5 20 0 10 5 20 5");
  EXPECT_EQ(9U, Drawing.Edges.size());
  EXPECT_EQ(1U, Drawing.Curves.size());
}

TEST(ReadDxf, BoundsTheExpansionOfBlocks) {
  const TDrawing Loop = ReadBlock("0 LINE 8 0 10 0 20 0 11 1 21 0 0 INSERT 8 0 2 B 10 1 20 1",
                                  "0 INSERT 8 0 2 B 10 0 20 0");
  EXPECT_EQ(1, Loop.Skipped.at("INSERT (within its own block)"));
  EXPECT_EQ(1U, Loop.Edges.size());
  // Twice in itself: each level of nesting would double what is expanded.
  const TDrawing Twice = ReadBlock(
      "0 LINE 8 0 10 0 20 0 11 1 21 0 0 INSERT 8 0 2 B 10 1 20 1 70 2 0 INSERT 8 0 2 B 10 1 20 1",
      "0 INSERT 8 0 2 B 10 0 20 0");
  EXPECT_EQ(2, Twice.Skipped.at("INSERT (within its own block)"));
  std::string Chain = "0 SECTION 2 BLOCKS ";
  for (int I = 1; I <= 40; ++I) {
    Chain += "0 BLOCK 2 C" + std::to_string(I) + " 0 INSERT 8 0 2 C" + std::to_string(I - 1) +
             " 10 0 20 0 0 ENDBLK ";
  }
  EXPECT_NE(
      std::string::npos,
      Refusal(Lines(Chain + "0 ENDSEC " + Entities("0 INSERT 8 0 2 C40 10 0 20 0"))).find("deep"));

  std::string Blocks = "0 SECTION 2 BLOCKS 0 BLOCK 2 B0 0 LINE 8 0 10 0 20 0 11 1 21 0 0 ENDBLK ";
  for (int I = 1; I <= 24; ++I) {
    const std::string Inner = " 0 INSERT 8 0 2 B" + std::to_string(I - 1) + " 10 0 20 0";
    Blocks += "0 BLOCK 2 B" + std::to_string(I) + Inner + Inner + " 0 ENDBLK ";
  }
  EXPECT_NE(std::string::npos,
            Refusal(Lines(Blocks + "0 ENDSEC " + Entities("0 INSERT 8 0 2 B24 10 0 20 0")))
                .find("expands to more than"));
  EXPECT_NE(std::string::npos,
            Refusal(Lines(Blocks + "0 ENDSEC " +
                          Entities("0 INSERT 8 0 2 B0 10 0 20 0 70 2000000000 71 2000000000")))
                .find("expands to more than"));
  std::string Texts;
  for (int I = 0; I < 100000; ++I) Texts += "0 TEXT ";
  const TDrawing Many = ReadBlock(Texts + "0 LINE 8 0 10 0 20 0 11 1 21 0",
                                  "0 INSERT 8 0 2 B 10 0 20 0 44 5 70 30000");
  EXPECT_EQ(3000000000, Many.Skipped.at("TEXT"));
  // Nothing is drawn two thousand million times over.
  EXPECT_NE(std::string::npos,
            Refusal(Lines("0 SECTION 2 BLOCKS 0 BLOCK 2 E 0 TEXT 8 0 1 Hi 0 ENDBLK 0 ENDSEC " +
                          Entities("0 INSERT 8 0 2 E 10 0 20 0 70 2000000000 71 2000000000")))
                .find("nothing to cut"));
}

// Bytes dropped, doubled or changed anywhere in a sound file: read or refused, nothing else.
TEST(ReadDxf, SurvivesDamage) {
  const std::string Sound = Lines(
      "0 SECTION 2 HEADER 9 $INSUNITS 70 4 0 ENDSEC 0 SECTION 2 BLOCKS 0 BLOCK 2 B 10 0 20 0 "
      "0 ARC 8 0 10 0 20 0 40 2 50 0 51 90 0 ENDBLK 0 ENDSEC " +
      Entities(
          "0 INSERT 8 0 2 B 10 1 20 1 41 2 42 3 70 2 71 2 44 5 45 5 "
          "0 POLYLINE 8 0 66 1 70 1 0 VERTEX 8 0 10 0 20 0 42 1 0 VERTEX 8 0 10 1 20 0 0 SEQEND "
          "0 SPLINE 8 0 70 8 71 2 72 6 73 3 74 0 40 0 40 0 40 0 40 1 40 1 40 1 "
          "10 0 20 0 10 1 20 1 10 2 20 0 0 LWPOLYLINE 8 0 90 2 70 0 10 0 20 0 42 0.5 10 3 20 3"));
  EXPECT_EQ("mm", ReadDxf(Sound, 0.01).Unit);
  int Read = 0;
  for (std::size_t I = 0; I < Sound.size(); ++I) {
    for (int Kind = 0; Kind < 4; ++Kind) {
      std::string Damaged = Sound;
      if (Kind == 0) Damaged.erase(I, 1);
      if (Kind == 1) Damaged.insert(I, 1, Damaged[I]);
      if (Kind == 2) Damaged[I] = '9';
      if (Kind == 3) Damaged.resize(I);
      if (Refusal(Damaged) == "read") ++Read;
    }
  }
  EXPECT_GT(Read, 100);
  EXPECT_EQ(1U, ReadDxf(Sound.substr(0, Sound.size() - 6), 0.01).Notes.size());  // no EOF
}

}  // namespace

}  // namespace sheet_planner
