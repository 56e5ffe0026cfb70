#pragma once  // examples/Svg.h

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "examples/Numbers.h"
#include "geometryAlgo/VedaType.h"

namespace examples {

/// Colours that stay apart on white, in print and for colour-blind readers (after Okabe and Ito).
inline constexpr std::string_view kInk = "#1e293b";
inline constexpr std::string_view kGrey = "#94a3b8";
inline constexpr std::string_view kPale = "#e8edf3";
inline constexpr std::string_view kBlue = "#0072b2";
inline constexpr std::string_view kSky = "#56b4e9";
inline constexpr std::string_view kGreen = "#009e73";
inline constexpr std::string_view kOrange = "#e69f00";
inline constexpr std::string_view kYellow = "#f0e442";
inline constexpr std::string_view kRed = "#d55e00";
inline constexpr std::string_view kPink = "#cc79a7";

/// How a shape is drawn. Width in pixels, dash as SVG has it.
struct TPen {
  std::string_view Stroke = kInk;
  double Width = 1.6;
  std::string_view Dash = {};
  std::string_view Fill = "none";
};

inline TPen Filled(std::string_view Colour) {
  return {"none", 0.0, {}, Colour};
}

/// A picture of model geometry for the examples: what is drawn first lies behind, a legend stands
/// below. 800 pixels wide on white; two decimals a coordinate, so that every machine writes the
/// same bytes.
///
///     TSvg Svg({{0, 0}, {100, 50}});
///     Svg.Draw(Part, {kBlue, 2});
///     Svg.Legend({kBlue, 2}, "the part");
///     return Svg.Save(argc, argv);
class TSvg {
 public:
  /// A picture of the model's `Field`.
  explicit TSvg(const tarnalgo::TVRect2D& Field)
      : FField(Field),
        FScale(std::min(kDrawn / Field.Width(), kHighest / Field.Height())),
        FLeft((kWidth - Field.Width() * FScale) / 2) {}

  void Draw(const tarnalgo::TVLine2D& Line, const TPen& Pen) {
    Path(Way({Line.StartPoint, Line.EndPoint}), Pen);
  }
  void Draw(const tarnalgo::TVPolyline2D& Polyline, const TPen& Pen) {
    Path(Way(Polyline.Points()), Pen);
  }
  /// All contours as one shape: a filled region has its holes.
  void Draw(const tarnalgo::TVGeometry2DList<tarnalgo::TVPolyline2D>& Contours, const TPen& Pen) {
    std::string Ways;
    for (const tarnalgo::TVPolyline2D* Contour : Contours) Ways += Way(Contour->Points());
    Path(Ways, Pen);
  }
  void Draw(const tarnalgo::TGeCurve2D& Curve, const TPen& Pen) {
    Path(Way(Curve.Sample(0.1 / FScale)), Pen);
  }
  void Draw(const tarnalgo::TLABPolyline& Chain, const TPen& Pen) {
    Path(Way(Chain.Sample(0.1 / FScale).Points()), Pen);
  }
  void Draw(const tarnalgo::TVGeometry2DList<tarnalgo::TLABPolyline>& Chains, const TPen& Pen) {
    std::string Ways;
    for (const tarnalgo::TLABPolyline* Chain : Chains) {
      Ways += Way(Chain->Sample(0.1 / FScale).Points());
    }
    Path(Ways, Pen);
  }
  /// A disc of that many pixels round a place.
  void Dot(const tarnalgo::TPoint2D& P, std::string_view Colour, double Radius = 4.5) {
    FBody += Disc(X(P), Y(P), Radius, Colour);
  }
  /// Text that begins at `P`, or has its middle there.
  void Text(const tarnalgo::TPoint2D& P, std::string_view Content, bool IsCentred = false) {
    FBody += Label(X(P), Y(P), Content, IsCentred ? " text-anchor=\"middle\"" : "");
  }
  /// An entry of the legend: a bit of the pen, or a dot of its colour where `IsDot`.
  void Legend(const TPen& Pen, std::string_view Content, bool IsDot = false) {
    FLegend.push_back({Pen, std::string(Content), IsDot});
  }

  /// Writes the picture to the file that the program's first argument names, if there is one. The
  /// answer is what `main` returns: 1 when the file cannot be written.
  int Save(int argc, char** argv) const {
    if (argc < 2) return 0;
    std::ofstream File(argv[1], std::ios::binary);
    File << Content();
    return File.flush() ? 0 : 1;
  }

 private:
  static constexpr double kWidth = 800.0;  // pixels, like the rest
  static constexpr double kMargin = 20.0;
  static constexpr double kDrawn = kWidth - 2 * kMargin;
  static constexpr double kHighest = 470.0;
  static constexpr double kRow = 28.0;

  struct TEntry {
    TPen Pen;
    std::string Text;
    bool IsDot;
  };

  double X(const tarnalgo::TPoint2D& P) const { return FLeft + (P.X - FField.Left) * FScale; }
  double Y(const tarnalgo::TPoint2D& P) const { return kMargin + (FField.Top - P.Y) * FScale; }

  /// The points as path data; what begins where it ends is closed.
  std::string Way(const std::vector<tarnalgo::TPoint2D>& Points) const {
    std::string Result;
    std::string Last;
    for (const tarnalgo::TPoint2D& P : Points) {
      std::string Place = Short(X(P), 2) + " " + Short(Y(P), 2);
      if (Place == Last) continue;
      Result += (Last.empty() ? "M" : "L") + Place;
      Last = std::move(Place);
    }
    const bool IsClosed = Points.size() > 2 && Points.front().Equals(Points.back());
    return IsClosed ? Result + "Z" : Result;
  }
  void Path(const std::string& Ways, const TPen& Pen) { FBody += PathText(Ways, Pen); }

  static std::string PathText(const std::string& Ways, const TPen& Pen) {
    std::string Text =
        "<path d=\"" + Ways + "\" fill=\"" + std::string(Pen.Fill) + "\" fill-rule=\"evenodd\"";
    if (Pen.Width > 0.0) {
      Text += " stroke=\"" + std::string(Pen.Stroke) + "\" stroke-width=\"" + Short(Pen.Width, 2) +
              "\" stroke-linejoin=\"round\"";
    }
    if (!Pen.Dash.empty()) Text += " stroke-dasharray=\"" + std::string(Pen.Dash) + "\"";
    return Text + "/>\n";
  }
  static std::string Disc(double AX, double AY, double Radius, std::string_view Colour) {
    return "<circle cx=\"" + Short(AX, 2) + "\" cy=\"" + Short(AY, 2) + "\" r=\"" +
           Short(Radius, 2) + "\" fill=\"" + std::string(Colour) +
           "\" stroke=\"#ffffff\" stroke-width=\"1\"/>\n";
  }
  static std::string Label(double AX, double AY, std::string_view Content,
                           std::string_view More = {}) {
    return "<text x=\"" + Short(AX, 2) + "\" y=\"" + Short(AY, 2) + "\"" + std::string(More) + ">" +
           std::string(Content) + "</text>\n";
  }

  std::string Content() const {
    const std::size_t Rows = (FLegend.size() + 1) / 2;
    const double LegendTop = 2 * kMargin + FField.Height() * FScale;
    const std::string Height =
        Short(std::ceil(LegendTop + static_cast<double>(Rows) * kRow + kMargin / 2), 0);
    std::string Text = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"800\" height=\"" +
                       Height + "\" viewBox=\"0 0 800 " + Height +
                       "\" font-family=\"'DejaVu Sans', Verdana, sans-serif\" font-size=\"15\" "
                       "fill=\"" +
                       std::string(kInk) + "\">\n" +
                       "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n" + FBody;
    for (std::size_t I = 0; I < FLegend.size(); ++I) {
      const TEntry& Entry = FLegend[I];
      const double Left = kMargin + (I % 2 == 0 ? 0.0 : kWidth / 2);
      const std::size_t Row = I / 2;
      const double Middle = LegendTop + kRow * (static_cast<double>(Row) + 0.5);
      if (Entry.IsDot) {
        Text += Disc(Left + 22, Middle, 5.5, Entry.Pen.Stroke);
      } else if (Entry.Pen.Fill != "none") {
        Text +=
            PathText("M" + Short(Left, 2) + " " + Short(Middle - 8, 2) + "h44v16h-44Z", Entry.Pen);
      } else {
        Text += PathText("M" + Short(Left, 2) + " " + Short(Middle, 2) + "h44", Entry.Pen);
      }
      Text += Label(Left + 54, Middle + 5, Entry.Text);
    }
    return Text + "</svg>\n";
  }

  tarnalgo::TVRect2D FField;
  double FScale;  // pixels for a model unit
  double FLeft;
  std::string FBody;
  std::vector<TEntry> FLegend;
};

}  // namespace examples
