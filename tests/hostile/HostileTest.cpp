// Every public operation with hostile input: it must end in bounded time, without undefined
// behaviour (the sanitizers tell), without a leak, and raise nothing but the library's exceptions.
//
// TARNALGO_HOSTILE_CALLS sets the number of calls a row, TARNALGO_HOSTILE_SEED other values,
// TARNALGO_HOSTILE_LONG how many equal items the long lists hold (two more calls a row),
// TARNALGO_HOSTILE_ONLY runs the rows whose names contain it, TARNALGO_HOSTILE_APART=1 runs each
// row in a process of its own.

#include <gtest/gtest.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <map>

#include "host/Exceptions.h"
#include "tests/hostile/Table.h"

namespace tarnalgo::test {

std::vector<TRow>& AllRows() {
  static std::vector<TRow> Rows;
  return Rows;
}

namespace {

// Seconds of processor time, which other work on the machine does not lengthen; in proportion more
// for lists beyond kManyItems.
constexpr int kLongestCall = 2;
constexpr int kHanging = 20;
constexpr int kManyItems = 100000;

int TimesLonger(int Long) {
  return std::max(1, Long / kManyItems);
}

// Where the answer itself is quadratic (equal segments all meet one another), or a dense matrix is
// formed of the list, and solved in cubic time, long lists are shorter.
constexpr std::string_view kQuadratic[] = {
    "TSeglinesIntersector", "TFloatMatrix",        "TMatrixDCMPTool",      "TLinearSolveTool",
    "TLinearProgramMethod", "TInequalityDataList", "TSimplexAndDualMethod"};
constexpr int kFewEqual = 100;

void LimitTime(int Seconds) {
  const itimerval Limit = {{0, 0}, {Seconds, 0}};
  setitimer(ITIMER_PROF, &Limit, nullptr);
}

double ProcessorTime() {
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

const char* CurrentRow = "";
int CurrentCall = 0;

void Tell() {
  char Text[512];
  const int Length =
      std::snprintf(Text, sizeof Text, "\nhostile: row %s, call %d\n", CurrentRow, CurrentCall);
  static_cast<void>(!write(2, Text, static_cast<std::size_t>(std::max(0, Length))));
}

void TellOfSignal(int Signal) {
  Tell();
  std::signal(Signal, SIG_DFL);
  std::raise(Signal);
}

#if defined(__has_feature)
#define HAS_FEATURE(Name) __has_feature(Name)
#else
#define HAS_FEATURE(Name) 0
#endif
#if defined(__SANITIZE_ADDRESS__) || HAS_FEATURE(address_sanitizer)
extern "C" void __sanitizer_set_death_callback(void (*Callback)());
void TellOfTrouble() {
  __sanitizer_set_death_callback(Tell);
}
#else
void TellOfTrouble() {
  for (const int Signal : {SIGSEGV, SIGABRT, SIGFPE}) std::signal(Signal, TellOfSignal);
}
#endif

/// A folder of its own, with some files to read, as the working folder.
class TScratchFolder {
 public:
  TScratchFolder() {
    std::string Name = (std::filesystem::temp_directory_path() / "hostile.XXXXXX").string();
    FName = mkdtemp(Name.data());
    std::filesystem::current_path(FName);
    std::ofstream("numbers.txt") << "2 2\n1 2\n1e400 nan\n";
    std::ofstream("words.txt") << "two words\n\xff\n-9999999999 3";
  }
  ~TScratchFolder() {
    std::filesystem::current_path("/");
    std::filesystem::remove_all(FName);
  }
  TScratchFolder(const TScratchFolder&) = delete;
  TScratchFolder& operator=(const TScratchFolder&) = delete;

 private:
  std::filesystem::path FName;
};

std::uint64_t HashOf(const char* Name) {
  std::uint64_t Hash = 1469598103934665603u;
  for (; *Name; ++Name) Hash = (Hash ^ static_cast<unsigned char>(*Name)) * 1099511628211u;
  return Hash;
}

class TRun {
 public:
  void All() {
    for (const TRow& Row : AllRows()) {
      if (Row.Class && Row.Mutates) FMutators[Row.Class].push_back(&Row);
    }
    const char* const Only = std::getenv("TARNALGO_HOSTILE_ONLY");
    for (const TRow& Row : AllRows()) {
      if (!Only || std::string(Row.Name).find(Only) != std::string::npos) RunApart(Row);
    }
    std::printf("%d rows, %lld calls, %lld of them raised; slowest %.3f s: %s\n", FRows, FCalls,
                FRaised, FSlowest, FSlowestRow);
  }

 private:
  static int FromEnvironment(const char* Name, int Default) {
    const char* const Text = std::getenv(Name);
    return Text ? std::atoi(Text) : Default;
  }

  /// Failures of the rows so far.
  static int PartsTold() {
    return testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count();
  }

  /// In a process of its own where asked for, so that one fault does not hide the others.
  void RunApart(const TRow& Row) {
    ++FRows;
    if (!FIsApart) return RunRow(Row);
    const pid_t Child = fork();
    if (Child == 0) {
      const int Before = PartsTold();
      RunRow(Row);
      _exit(PartsTold() > Before ? 1 : 0);
    }
    int Status = 0;
    waitpid(Child, &Status, 0);
    EXPECT_EQ(Status, 0) << Row.Name;
  }

  void RunRow(const TRow& Row) {
    CurrentRow = Row.Name;
    int Finished = 0;
    const long long RaisedBefore = FRaised;
    const std::uint64_t Seed = HashOf(Row.Name) + static_cast<std::uint64_t>(FSeed);
    for (int Call = 0; Call < FCallsOfRow; ++Call) Finished += RunCall(Row, Seed, Call, 0) ? 1 : 0;
    if (FRaised - RaisedBefore == FCallsOfRow) std::printf("always raised: %s\n", Row.Name);
    const bool IsShort = std::any_of(
        std::begin(kQuadratic), std::end(kQuadratic),
        [&Row](std::string_view Name) { return std::string_view(Row.Name).starts_with(Name); });
    for (int Call = 0; Call < 2; ++Call) RunCall(Row, Seed, Call, IsShort ? kFewEqual : FLong);
    EXPECT_GT(Finished, 0) << Row.Name << " never had arguments to be called with";
  }

  /// The object is led through a few other operations of its class first, so that the call meets it
  /// in many a state.
  void LeadThroughHistory(const TRow& Row, void* Self) {
    const auto& Mutators = FMutators[Row.Class];
    if (Mutators.empty()) return;
    for (int Step = FHostile.Pick(4); Step > 0; --Step) {
      const TRow& Other =
          *Mutators[static_cast<std::size_t>(FHostile.Pick(static_cast<int>(Mutators.size())))];
      try {
        Other.Call(FHostile, Self);
      } catch (const Exception&) {
      } catch (const TNoValue&) {}
    }
  }

  bool RunCall(const TRow& Row, std::uint64_t Seed, int Call, int Long) {
    CurrentCall = Call;
    LimitTime(kHanging * TimesLonger(Long));
    FHostile.Begin(Seed, Call, Long);
    const double Start = ProcessorTime();
    bool IsFinished = true;
    try {
      void* const Self = Row.MakeSelf ? Row.MakeSelf(FHostile) : nullptr;
      if (Self) LeadThroughHistory(Row, Self);
      ++FCalls;
      Row.Call(FHostile, Self);
    } catch (const TNoValue&) {
      IsFinished = false;
    } catch (const Exception&) {
      ++FRaised;
    } catch (const std::exception& Other) {
      ADD_FAILURE() << Row.Name << ", call " << Call << " raised " << Other.what();
    }
    FHostile.End(Row.MakeSelf != nullptr);
    const double Time = ProcessorTime() - Start;
    EXPECT_LT(Time, kLongestCall * TimesLonger(Long)) << Row.Name << ", call " << Call;
    if (Time > FSlowest) {
      FSlowest = Time;
      FSlowestRow = Row.Name;
    }
    return IsFinished;
  }

  const int FCallsOfRow = FromEnvironment("TARNALGO_HOSTILE_CALLS", 2 * THostile::Kinds());
  const bool FIsApart = FromEnvironment("TARNALGO_HOSTILE_APART", 0) != 0;
  const int FLong = FromEnvironment("TARNALGO_HOSTILE_LONG", 10000);
  const int FSeed = FromEnvironment("TARNALGO_HOSTILE_SEED", 0);
  THostile FHostile;
  std::map<std::string, std::vector<const TRow*>> FMutators;
  int FRows = 0;
  long long FCalls = 0;
  long long FRaised = 0;
  double FSlowest = 0.0;
  const char* FSlowestRow = "";
};

TEST(HostileInput, EveryOperationEndsCleanly) {
  const TScratchFolder Folder;
  TellOfTrouble();
  std::signal(SIGPROF, TellOfSignal);
  TRun().All();
  setitimer(ITIMER_PROF, nullptr, nullptr);
}

}  // namespace
}  // namespace tarnalgo::test
