#include "examples/sheet_planner/DxfText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <optional>
#include <set>
#include <span>
#include <utility>

#include "examples/sheet_planner/BadInput.h"

namespace sheet_planner {

namespace {

/// Longer names are cut, longer numbers are none: the DXF library gives up at lines of 1024 bytes.
constexpr std::size_t kLongestName = 255;
constexpr std::size_t kLongestNumber = 255;

/// Kinds of entity that are named one by one when they are left out.
constexpr std::size_t kMostNamedKinds = 64;

std::string_view Trim(std::string_view Text) {
  constexpr std::string_view kBlank = " \t\f\v";
  const std::size_t First = Text.find_first_not_of(kBlank);
  if (First == std::string_view::npos) return {};
  return Text.substr(First, Text.find_last_not_of(kBlank) - First + 1);
}

std::optional<int> ToInt(std::string_view Text) {
  if (Text.size() > kLongestNumber) return std::nullopt;
  int Value = 0;
  const auto [End, Error] = std::from_chars(Text.data(), Text.data() + Text.size(), Value);
  if (Error != std::errc() || End != Text.data() + Text.size()) return std::nullopt;
  return Value;
}

std::optional<double> ToDouble(std::string_view Text) {
  if (Text.size() > kLongestNumber) return std::nullopt;
  if (!Text.empty() && Text.front() == '+') Text.remove_prefix(1);
  double Value = 0.0;
  const auto [End, Error] = std::from_chars(Text.data(), Text.data() + Text.size(), Value);
  const bool IsRead = Error == std::errc() && End == Text.data() + Text.size();
  if (!IsRead || !std::isfinite(Value)) return std::nullopt;
  return Value;
}

/// Printable and short enough for a message.
std::string ForUser(std::string_view Text) {
  std::string Result;
  for (const char C : Text.substr(0, 40)) Result += C >= ' ' && C <= '~' ? C : '?';
  return Result;
}

/// One group: a code and its value.
struct TGroup {
  int Code = 0;
  std::string_view Value;
};

/// Lines of any ending: LF, CR LF, CR alone, and CR CR LF as careless conversions leave it.
class TLines {
 public:
  explicit TLines(std::string_view Text) : FRest(Text) {}

  bool AtEnd() const { return FRest.empty(); }
  int Number() const { return FNumber; }
  std::string_view Next() {
    const std::size_t End = std::min(FRest.find_first_of("\r\n"), FRest.size());
    const std::string_view Line = FRest.substr(0, End);
    FRest.remove_prefix(End);
    ++FNumber;
    if (FRest.starts_with("\r\r\n")) {
      FRest.remove_prefix(3);
    } else if (FRest.starts_with("\r\n")) {
      FRest.remove_prefix(2);
    } else if (!FRest.empty()) {
      FRest.remove_prefix(1);
    }
    return Line;
  }

 private:
  std::string_view FRest;
  int FNumber = 0;
};

void RefuseForeignFormats(std::string_view Bytes) {
  if (Bytes.empty()) throw EBadInput("the file is empty");
  if (Bytes.starts_with("AutoCAD Binary DXF")) {
    throw EBadInput("binary DXF is not supported: save the drawing as ASCII DXF");
  }
  if (Bytes.starts_with("\xFF\xFE") || Bytes.starts_with("\xFE\xFF")) {
    throw EBadInput("UTF-16 text is not supported: save the drawing as ASCII DXF");
  }
  if (Bytes.starts_with("AC10")) throw EBadInput("a DWG file, not DXF: save the drawing as DXF");
  if (Bytes.find('\0') != std::string_view::npos) {
    throw EBadInput("not a DXF text: it holds binary data");
  }
}

/// Errors: a line where a group code must stand and does not.
std::vector<TGroup> ReadGroups(std::string_view Bytes) {
  if (Bytes.starts_with("\xEF\xBB\xBF")) Bytes.remove_prefix(3);
  std::vector<TGroup> Groups;
  TLines Lines(Bytes);
  while (!Lines.AtEnd()) {
    const std::string_view CodeText = Trim(Lines.Next());
    const bool IsTail = CodeText.empty() || CodeText == "\x1A";
    if (IsTail && (Groups.empty() || Lines.AtEnd() || Groups.back().Value == "EOF")) continue;
    const std::optional<int> Code = ToInt(CodeText);
    if (!Code) {
      throw EBadInput("not a sound DXF text: line " + std::to_string(Lines.Number()) +
                      " should be a group code and reads \"" + ForUser(CodeText) + "\"");
    }
    if (Lines.AtEnd()) break;  // cut off within a group; the missing EOF is noted
    Groups.push_back({*Code, Trim(Lines.Next())});
    if (Groups.back().Code == 0 && Groups.back().Value == "EOF") break;
  }
  return Groups;
}

/// A kind of entity that is written on, and which of its groups.
struct TServedKind {
  std::string_view Name;
  bool HasAxis;  // which way is up for it says where it lies or which way it turns
  std::span<const int> Decimals;
  std::span<const int> Wholes;
  std::span<const int> Required;
};

constexpr int kLineDecimals[] = {10, 20, 11, 21};
constexpr int kArcDecimals[] = {10, 20, 40, 50, 51};
constexpr int kCircleDecimals[] = {10, 20, 40};
constexpr int kEllipseDecimals[] = {10, 20, 11, 21, 40, 41, 42};
constexpr int kEllipseRequired[] = {10, 20, 11, 21, 40};
constexpr int kPolylineDecimals[] = {10, 20, 42};
constexpr int kPolylineRequired[] = {10, 20};
constexpr int kSplineDecimals[] = {10, 20, 11, 21, 40, 41};
constexpr int kInsertDecimals[] = {10, 20, 41, 42, 44, 45, 50};
constexpr int kFlags[] = {70};
constexpr int kSplineWholes[] = {70, 71};
constexpr int kInsertWholes[] = {70, 71};
constexpr int kInsertRequired[] = {2, 10, 20};

const TServedKind kServedKinds[] = {
    {"LINE", false, kLineDecimals, {}, kLineDecimals},
    {"ARC", true, kArcDecimals, {}, kArcDecimals},
    {"CIRCLE", true, kCircleDecimals, {}, kCircleDecimals},
    {"ELLIPSE", true, kEllipseDecimals, {}, kEllipseRequired},
    {"LWPOLYLINE", true, kPolylineDecimals, kFlags, kPolylineRequired},
    {"POLYLINE", true, {}, kFlags, {}},
    {"VERTEX", false, kPolylineDecimals, kFlags, kPolylineRequired},
    {"SPLINE", false, kSplineDecimals, kSplineWholes, {}},
    {"INSERT", true, kInsertDecimals, kInsertWholes, kInsertRequired},
};

bool Holds(std::span<const int> Codes, int Code) {
  return std::find(Codes.begin(), Codes.end(), Code) != Codes.end();
}

using TGroups = std::span<const TGroup>;

const TGroup* Find(TGroups Groups, int Code) {
  const auto Found = std::find_if(Groups.begin(), Groups.end(),
                                  [Code](const TGroup& Group) { return Group.Code == Code; });
  return Found == Groups.end() ? nullptr : &*Found;
}

int IntOf(TGroups Groups, int Code, int Default) {
  const TGroup* const Group = Find(Groups, Code);
  return Group ? ToInt(Group->Value).value_or(Default) : Default;
}

std::ptrdiff_t CountOf(TGroups Groups, int Code) {
  return std::count_if(Groups.begin(), Groups.end(),
                       [Code](const TGroup& Group) { return Group.Code == Code; });
}

/// The walk through the sections, object by object (an object is a group 0 and what follows it).
class TCleaner {
 public:
  explicit TCleaner(std::vector<TGroup> Groups) : FGroups(std::move(Groups)) {}

  TDxfText Run() {
    while (FNext < FGroups.size()) Object();
    if (!FSawEntities) throw EBadInput("not a DXF drawing: it has no ENTITIES section");
    if (FGroups.back().Value != "EOF") {
      FResult.Notes.push_back("the file ends without EOF: it may have been cut off");
    }
    CloseSection();
    Write(0, "EOF");
    return std::move(FResult);
  }

 private:
  void Write(int Code, std::string_view Value) {
    FResult.Text += std::to_string(Code);
    FResult.Text += '\n';
    FResult.Text += Value;
    FResult.Text += '\n';
  }

  void Object() {
    std::size_t End = FNext + 1;
    while (End < FGroups.size() && FGroups[End].Code != 0) ++End;
    const TGroups Groups(FGroups.data() + FNext, End - FNext);
    FNext = End;
    if (Groups[0].Code != 0) return;  // comments before the first object
    const std::string_view Kind = Groups[0].Value;
    if (Kind == "SECTION") return Section(Groups);
    if (Kind == "ENDSEC") return CloseSection();
    if (FSection == "TABLES" && Kind == "LAYER") return Layer(Groups);
    if (FSection == "BLOCKS" && Kind == "BLOCK") return Block(Groups);
    if (FSection == "BLOCKS" && Kind == "ENDBLK") return Write(0, "ENDBLK");
    if (FSection == "BLOCKS" || FSection == "ENTITIES") Entity(Kind, Groups);
  }

  void Section(TGroups Groups) {
    CloseSection();
    const TGroup* const Name = Find(Groups, 2);
    FSection = Name ? Name->Value : std::string_view();
    if (FSection == "HEADER") Header(Groups);
    if (FSection == "ENTITIES") FSawEntities = true;
    if (FSection != "ENTITIES" && FSection != "BLOCKS") return;
    Write(0, "SECTION");
    Write(2, FSection);
    FIsOpen = true;
  }

  void CloseSection() {
    if (FIsOpen) Write(0, "ENDSEC");
    FIsOpen = false;
    FSection = {};
    FSequence = {};
  }

  void Header(TGroups Groups) {
    for (std::size_t I = 0; I + 1 < Groups.size(); ++I) {
      if (Groups[I].Code != 9 || Groups[I].Value != "$INSUNITS") continue;
      switch (ToInt(Groups[I + 1].Value).value_or(0)) {
        case 1:
          FResult.Unit = "in";
          break;
        case 4:
          FResult.Unit = "mm";
          break;
        case 5:
          FResult.Unit = "cm";
          break;
        case 6:
          FResult.Unit = "m";
          break;
        default:
          break;
      }
    }
  }

  void Layer(TGroups Groups) {
    const TGroup* const Name = Find(Groups, 2);
    const bool IsOff = IntOf(Groups, 62, 7) < 0;
    const bool IsFrozen = (IntOf(Groups, 70, 0) & 1) != 0;
    if (Name && (IsOff || IsFrozen)) FHiddenLayers.insert(Name->Value);
  }

  void Block(TGroups Groups) {
    FSequence = {};
    Write(0, "BLOCK");
    const TGroup* const Name = Find(Groups, 2);
    FBlock = Name ? Name->Value.substr(0, kLongestName) : std::string_view();
    Write(2, FBlock);
    for (const int Code : {10, 20}) {
      const TGroup* const Base = Find(Groups, Code);
      if (Base && IsCoordinate(Base->Value)) Write(Code, Base->Value);
    }
  }

  void Skip(std::string_view Kind, const char* Why = nullptr) {
    TCensus& Census = FSection == "BLOCKS" ? FResult.SkippedInBlocks[FBlock] : FResult.Skipped;
    std::string Name = ForUser(Kind) + (Why ? std::string(" (") + Why + ")" : "");
    if (Census.size() >= kMostNamedKinds && !Census.contains(Name)) Name = "other kinds";
    ++Census[Name];
  }

  static bool IsCoordinate(std::string_view Text) {
    const std::optional<double> Value = ToDouble(Text);
    return Value && std::abs(*Value) <= kLargestCoordinate;
  }

  void Entity(std::string_view Kind, TGroups Groups) {
    if (Kind == "SEQEND") {
      if (FSequence == "POLYLINE") Write(0, "SEQEND");
      FSequence = {};
      return;
    }
    if (Kind == "VERTEX" || Kind == "ATTRIB") {
      // Part of the POLYLINE or INSERT before it, and with it skipped or served.
      if (Kind == "VERTEX" && FSequence == "POLYLINE") Vertex(Groups);
      return;
    }
    if (FSequence == "POLYLINE") Write(0, "SEQEND");  // it had none
    FSequence = {};
    if (IntOf(Groups, 67, 0) == 1) return Skip(Kind, "paper space");
    if (IntOf(Groups, 60, 0) == 1) return Skip(Kind, "invisible");
    const TGroup* const Layer = Find(Groups, 8);
    if (Layer && FHiddenLayers.contains(Layer->Value)) return Skip(Kind, "hidden layer");
    const auto Served = std::find_if(std::begin(kServedKinds), std::end(kServedKinds),
                                     [Kind](const TServedKind& Item) { return Item.Name == Kind; });
    if (Served == std::end(kServedKinds)) return Skip(Kind);
    if (const char* const Why = Damage(*Served, Groups)) return Skip(Kind, Why);
    if (Kind == "POLYLINE") FSequence = Kind;
    WriteEntity(*Served, Groups);
  }

  void Vertex(TGroups Groups) {
    constexpr int kFramePoint = 16;  // of a curve fit; the fitted vertices follow it
    if ((IntOf(Groups, 70, 0) & kFramePoint) != 0) return;
    const TServedKind& Served = kServedKinds[6];
    if (const char* const Why = Damage(Served, Groups)) return Skip("VERTEX", Why);
    WriteEntity(Served, Groups);
  }

  /// Why the entity cannot be read, null when it can.
  static const char* Damage(const TServedKind& Kind, TGroups Groups) {
    for (const int Code : Kind.Required) {
      if (!Find(Groups, Code)) return "incomplete";
    }
    for (const TGroup& Group : Groups) {
      if (Holds(Kind.Decimals, Group.Code) && !IsCoordinate(Group.Value)) return "bad number";
      if (Holds(Kind.Wholes, Group.Code) && !ToInt(Group.Value)) return "bad number";
    }
    for (const int Code : {210, 220, 230}) {
      const TGroup* const Axis = Find(Groups, Code);
      if (!Axis || !Kind.HasAxis) continue;
      const double Value = ToDouble(Axis->Value).value_or(2.0);
      const double Size = Code == 230 ? std::abs(std::abs(Value) - 1.0) : std::abs(Value);
      if (Size > tarnalgo::kLinearTolerance) return "not in the plane";
    }
    if (CountOf(Groups, 10) != CountOf(Groups, 20)) return "incomplete";
    if (CountOf(Groups, 11) != CountOf(Groups, 21)) return "incomplete";
    constexpr int kMesh = 16 | 64;
    if (Kind.Name == "POLYLINE" && (IntOf(Groups, 70, 0) & kMesh) != 0) return "mesh";
    return nullptr;
  }

  void WriteEntity(const TServedKind& Kind, TGroups Groups) {
    Write(0, Kind.Name);
    if (const TGroup* const Layer = Find(Groups, 8)) {
      Write(8, Layer->Value.substr(0, kLongestName));
    }
    const TGroup* const Axis = Find(Groups, 230);
    if (Axis && Kind.HasAxis) Write(230, Axis->Value);
    if (Kind.Name == "INSERT") Write(2, Find(Groups, 2)->Value.substr(0, kLongestName));
    for (const int Code : Kind.Wholes) {
      if (const TGroup* const Whole = Find(Groups, Code)) Write(Code, Whole->Value);
    }
    if (Kind.Name == "POLYLINE") Write(66, "1");
    if (Kind.Name == "LWPOLYLINE") WriteCount(90, Groups, 10);
    if (Kind.Name == "SPLINE") {
      WriteCount(72, Groups, 40);
      WriteCount(73, Groups, 10);
      WriteCount(74, Groups, 11);
    }
    for (const TGroup& Group : Groups) {
      if (Holds(Kind.Decimals, Group.Code)) Write(Group.Code, Group.Value);
    }
  }

  void WriteCount(int Code, TGroups Groups, int Counted) {
    Write(Code, std::to_string(CountOf(Groups, Counted)));
  }

  std::vector<TGroup> FGroups;
  std::size_t FNext = 0;
  TDxfText FResult;
  std::set<std::string_view> FHiddenLayers;
  std::string_view FSection;
  std::string FBlock;          // the block that is being read
  std::string_view FSequence;  // POLYLINE while its vertices are awaited
  bool FIsOpen = false;        // a section was begun in the result
  bool FSawEntities = false;
};

}  // namespace

TDxfText CleanDxf(std::string_view Bytes) {
  RefuseForeignFormats(Bytes);
  std::vector<TGroup> Groups = ReadGroups(Bytes);
  if (Groups.empty()) throw EBadInput("not a DXF drawing: nothing in it could be read");
  return TCleaner(std::move(Groups)).Run();
}

}  // namespace sheet_planner
