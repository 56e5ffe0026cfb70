#include <CLI/CLI.hpp>
#include <cmath>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "examples/sheet_planner/BadInput.h"
#include "examples/sheet_planner/Connections.h"
#include "examples/sheet_planner/EdgePrep.h"
#include "examples/sheet_planner/JsonWriter.h"
#include "examples/sheet_planner/Machine.h"
#include "examples/sheet_planner/Planner.h"
#include "examples/sheet_planner/Report.h"
#include "examples/sheet_planner/SampleSheets.h"
#include "examples/sheet_planner/SvgWriter.h"
#include "examples/sheet_planner/Tracing.h"
#ifdef SHEET_PLANNER_DXF
#include "examples/sheet_planner/DxfReader.h"
#include "examples/sheet_planner/DxfWriter.h"
#endif

namespace {

using namespace sheet_planner;
using tarnalgo::TProgressEvent;

enum TExitCode { kPlanned = 0, kBadInput = 1, kWrongUsage = 2 };

struct TOptions {
  std::string Input;
  std::string Sample;
  std::string Output = "plan.svg";
  std::string Json;
  std::string Dxf;
  TMachine Machine;
  TConnectOptions Connect;
  double ChordError = 0.05;
  TPrepOptions Prep;
  std::optional<double> TraceGap;
  bool WithListing = false;
  bool WithProgress = false;
};

const std::map<std::string, std::function<TDrawing()>> kSamples{
    {"plate", [] { return PerforatedPlate(); }},
    {"brackets", [] { return BracketNest(); }},
    {"squares", [] { return SquareGrid(160, 160); }},
};

const std::map<std::string, TConnect> kConnects{
    {"stop", TConnect::Stop}, {"curves", TConnect::Curves}, {"transitions", TConnect::Transitions}};

/// A finite number of at least `Least`; the parser lets "nan" and "inf" pass.
CLI::Validator AtLeast(double Least) {
  const auto Check = [Least](const std::string& Text) {
    double Value = 0.0;
    const bool IsFine =
        CLI::detail::lexical_cast(Text, Value) && std::isfinite(Value) && Value >= Least;
    return IsFine ? std::string() : "must be a number of at least " + CLI::detail::to_string(Least);
  };
  return CLI::Validator(Check, "");
}

CLI::Validator OneOfTheSamples() {
  const auto Check = [](const std::string& Text) {
    return kSamples.contains(Text) ? std::string() : "no such sample: " + Text;
  };
  return CLI::Validator(Check, "");
}

void AddNumber(CLI::App& App, const std::string& Name, double& Variable, const std::string& Text,
               double Least, const std::string& Group) {
  App.add_option(Name, Variable, Text)
      ->check(AtLeast(Least))
      ->capture_default_str()
      ->type_name("NUMBER")
      ->group(Group);
}

void AddTunable(CLI::App& App, const std::string& Name, double& Variable, const std::string& Text,
                double Least = 0.0) {
  AddNumber(App, Name, Variable, Text, Least, "Tunables (lengths in the drawing's unit)");
}

/// What the time of the plan is reckoned with.
void AddMachine(CLI::App& App, TMachine& Machine) {
  const auto Add = [&App](const char* Name, double& Variable, const char* Text) {
    constexpr double kLeast = 1e-3;
    AddNumber(App, Name, Variable, Text, kLeast, "Machine (drawing's unit and seconds)");
  };
  Add("--cut-speed", Machine.CutSpeed, "speed of cuts and of gaps flown over");
  Add("--rapid-speed", Machine.RapidSpeed, "speed of rapid moves");
  Add("--acceleration", Machine.Acceleration, "from halt to speed and back");
  Add("--pierce-time", Machine.PierceTime, "where the beam goes on at a halt");
}

TDrawing Load(const TOptions& Options) {
  if (!Options.Sample.empty()) return kSamples.at(Options.Sample)();
#ifdef SHEET_PLANNER_DXF
  return ReadDxfFile(Options.Input, Options.ChordError);
#else
  throw EBadInput("this build reads no DXF (TARNALGO_PLANNER_DXF is off); try --sample plate");
#endif
}

void Save(const std::string& Path, const std::string& Text) {
  std::ofstream File(Path, std::ios::binary);
  File << Text;
  File.close();
  if (!File) throw EBadInput("cannot write " + Path);
}

void ShowProgress(void*, int Total, int Current) {
  std::cerr << "\rplanned " << Current << " of " << Total << (Current == Total ? "\n" : "");
}

void Plan(const TOptions& Options) {
  TDrawing Drawing = Load(Options);
  TTraceStats Traced;
  if (Options.TraceGap) {
    Drawing = TraceDrawing(Drawing, {*Options.TraceGap, Options.Prep.Snap / 10.0}, Traced);
  }
  const TSheet Sheet = PrepareSheet(Drawing, Options.Prep);
  TPlan Result = PlanSheet(Sheet, Options.WithProgress ? ShowProgress : TProgressEvent());
  ConnectPasses(Sheet, Options.Connect, Result);
  Save(Options.Output, PlanSvg(Drawing, Sheet, Result));
  const std::vector<TMove> Moves = MovesOf(Sheet, Result);
  if (!Options.Json.empty()) Save(Options.Json, PlanJson(Drawing, Sheet, Moves));
#ifdef SHEET_PLANNER_DXF
  if (!Options.Dxf.empty()) WritePlanDxf(Options.Dxf, Moves);
#endif
  const TWork Before = Measure(MovesOf(Sheet, PlanContours(Sheet)), Options.Machine);
  if (Options.TraceGap) std::cout << TraceReport(Traced);
  std::cout << PlanReport(Drawing, Sheet, Result)
            << WorkReport(Drawing, Before, Measure(Moves, Options.Machine), Options.Machine);
  if (Options.WithListing) std::cout << "cutting order\n" << PlanListing(Drawing, Sheet, Result);
  std::cout << "picture  " << Options.Output << std::endl;
  if (!std::cout) throw EBadInput("cannot write the report");
}

}  // namespace

int main(int ArgCount, char** Args) {
  CLI::App App(
      "Plans the flying cut of a sheet: collinear straight edges are cut in passes without "
      "stopping.\nReads a drawing or takes a built-in sheet, writes the plan as a picture and "
      "a short report.",
      "sheet_planner");
  App.get_formatter()->column_width(30);
  App.footer(
      "Exit codes: 0 planned, 1 bad input, 2 wrong usage.\n"
      "Example: sheet_planner --sample plate --output plate.svg");
  App.failure_message([](const CLI::App*, const CLI::Error& Error) {
    return std::string("sheet_planner: ") + Error.what() + " (--help tells more)\n";
  });
  TOptions Options;
  double MostDegrees = Options.Connect.MaxAngle * 180.0 / tarnalgo::kPi;
  double AngleDegrees = tarnalgo::AngleTolerance * 180.0 / tarnalgo::kPi;
  App.set_version_flag("--version", "sheet_planner " SHEET_PLANNER_VERSION);
  App.add_option("drawing", Options.Input, "DXF drawing (ASCII) to plan")->type_name("FILE");
  App.add_option("--sample", Options.Sample, "instead: plate, brackets or squares")
      ->check(OneOfTheSamples())
      ->excludes("drawing")
      ->type_name("NAME");
  App.add_option("-o,--output", Options.Output, "picture to write")
      ->capture_default_str()
      ->type_name("FILE");
  App.add_option("--json", Options.Json, "the moves of the machine, to write too")
      ->type_name("FILE");
#ifdef SHEET_PLANNER_DXF
  App.add_option("--dxf", Options.Dxf, "the moves as a drawing, to write too")->type_name("FILE");
#endif
  App.add_flag("--list", Options.WithListing, "list every pass, circle and ordinary contour");
  App.add_flag("--progress", Options.WithProgress, "show on the error stream how far it is");
  App.add_flag("--layers-as-ports", Options.Prep.LayersAsPorts,
               "give each layer a channel port of its own");
  App.add_option("--trace", Options.TraceGap,
                 "cut the drawing where it meets itself, close gaps up to this, trace outlines")
      ->check(AtLeast(0.0))
      ->type_name("GAP");
  AddTunable(App, "--snap", Options.Prep.Snap, "ends this near to each other are one place",
             tarnalgo::kLinearTolerance);
  AddTunable(App, "--spline-tolerance", Options.ChordError,
             "chord error of flattened splines and ellipses", tarnalgo::kLinearTolerance);
  AddTunable(App, "--min-scan", tarnalgo::MinScanLineLength,
             "shorter straight stretches are not flown");
  AddTunable(App, "--max-scan", tarnalgo::MaxScanLineLength, "longer edges are not flown");
  AddTunable(App, "--max-connect", tarnalgo::MaxConnectDistance, "longer gaps end a pass");
  AddTunable(App, "--gap-piece", tarnalgo::CamSampleLen, "shorter gaps get no piece of their own");
  AddTunable(App, "--intercept-tolerance", tarnalgo::InterceptTolerance,
             "how far aside the edges of a pass may lie");
  AddTunable(App, "--angle-tolerance", AngleDegrees,
             "degrees; half of it is how far the edges of a pass may differ in direction");
  AddMachine(App, Options.Machine);
  App.add_option("--connect", Options.Connect.Connect, "between passes: stop, curves, transitions")
      ->transform(CLI::Transformer(kConnects))
      ->default_str("curves")
      ->type_name("NAME");
  constexpr double kLeastRadius = 1e-3;
  AddTunable(App, "--min-radius", Options.Connect.MinRadius, "transitions keep above this radius",
             kLeastRadius);
  AddTunable(App, "--max-angle", MostDegrees, "degrees; transitions turn by no more");
  try {
    App.parse(ArgCount, Args);
    if (Options.Input.empty() && Options.Sample.empty()) {
      throw CLI::RequiredError("a drawing or --sample");
    }
    std::error_code Error;
    for (const std::string& Path : {Options.Output, Options.Json, Options.Dxf}) {
      if (std::filesystem::equivalent(Options.Input, Path, Error)) {
        throw CLI::ValidationError(Path, "would overwrite the drawing");
      }
    }
    Options.Connect.MaxAngle = MostDegrees * tarnalgo::kPi / 180.0;
    tarnalgo::AngleTolerance = AngleDegrees * tarnalgo::kPi / 180.0;
  } catch (const CLI::ParseError& Error) {
    return App.exit(Error) == 0 ? kPlanned : kWrongUsage;
  }
  try {
    Plan(Options);
    return kPlanned;
  } catch (const std::exception& Error) {
    const std::string& Name = Options.Sample.empty() ? Options.Input : Options.Sample;
    std::cerr << "sheet_planner: " << Name << ": " << Error.what() << "\n";
    return kBadInput;
  }
}
