// First sight of a composition text: the registry parses it, resolves its units and
// quantity and caches it (UnitManager::verifyUnitCompositionString), beside
// UDUNITS-2's ut_parse of the same text, which caches nothing.
//
// The registry keeps every text it has verified, so each of our iterations needs a
// text it has never seen. FreshSpellings writes the same tokens with blanks (spaces
// and tabs, which the host parser skips) between them, a different spelling for each
// serial number, in batches made outside the timed region. UDUNITS-2 reads the
// unspaced text (it takes a blank for a multiplication).

#include <benchmark/benchmark.h>

#include <cctype>
#include <exception>
#include <map>
#include <string>
#include <vector>

#include "bench/support/ChildProcess.hpp"
#include "bench/support/Udunits.hpp"
#include "units/UnitManager.hpp"

namespace {

constexpr const char* kShortText = "kilogram/(meter*second^2)";
// Resistance written long-hand, with prefixes and units that cancel.
constexpr const char* kLongText =
    "(milligram*kilometer^2*hour*mole)/(ampere^2*second^3*minute*millimole)";

// Iterations per run: each one leaves a new text in the registry's cache, so runs are
// kept to a fixed, moderate size.
constexpr int kFirstSightIterations = 50000;

class FreshSpellings {
 public:
  explicit FreshSpellings(const std::string& text) {
    std::string name;
    for (char c : text) {
      if (std::isalnum(static_cast<unsigned char>(c)) || c == '_') {
        name += c;
        continue;
      }
      if (!name.empty()) tokens_.push_back(name);
      name.clear();
      tokens_.emplace_back(1, c);
    }
    if (!name.empty()) tokens_.push_back(name);
  }

  // Replaces `texts` with the next `count` spellings. Serial n puts the blanks that
  // n's base-7 digits choose into the gaps before, between and after the tokens, so
  // no two serials spell the text alike; serial 0, the text as written, is skipped.
  void nextBatch(std::vector<std::string>& texts, std::size_t count) {
    static const char* const kBlanks[] = {"", " ", "\t", "  ", " \t", "\t ", "\t\t"};
    texts.clear();
    for (std::size_t i = 0; i < count; ++i) {
      unsigned long long digits = ++serial_;
      std::string text;
      for (const std::string& token : tokens_) {
        text += kBlanks[digits % 7];
        digits /= 7;
        text += token;
      }
      text += kBlanks[digits % 7];
      texts.push_back(std::move(text));
    }
  }

 private:
  std::vector<std::string> tokens_;
  unsigned long long serial_ = 0;
};

void BM_FirstSight(benchmark::State& state, const char* text) {
  // One generator per text for the whole process: later runs never repeat a spelling.
  static std::map<std::string, FreshSpellings> generators;
  FreshSpellings& spellings = generators.try_emplace(text, text).first->second;
  TwUnits::UnitManager* units = TwUnits::UnitManager::Instance();
  std::vector<std::string> texts;
  std::size_t next = 0;
  for (auto _ : state) {
    if (next == texts.size()) {
      state.PauseTiming();
      spellings.nextBatch(texts, 4096);
      next = 0;
      state.ResumeTiming();
    }
    benchmark::DoNotOptimize(units->verifyUnitCompositionString(texts[next++]));
  }
}

void BM_Udunits_Parse(benchmark::State& state, const char* text) {
  ut_system* system = twbench::udunitsSystem();
  ut_unit* check = ut_parse(system, text, UT_ASCII);
  if (check == nullptr) {
    state.SkipWithError("UDUNITS-2 cannot parse the text");
    return;
  }
  ut_free(check);
  for (auto _ : state) {
    ut_unit* unit = ut_parse(system, text, UT_ASCII);
    benchmark::DoNotOptimize(unit);
    ut_free(unit);
  }
}

// For bench/instruction_counts.sh: `repeat_first_sight ours|udunits short|long <made>
// <used>` makes `made` fresh spellings of the text, then does the timed work of
// BM_FirstSight or BM_Udunits_Parse `used` times; runs that differ only in `used` tell
// the cost of the work alone.
TW_CHILD_TASK(repeat_first_sight) {
  const std::string side = arguments.at(0);
  const char* text = arguments.at(1) == "long" ? kLongText : kShortText;
  const std::size_t made = std::stoul(arguments.at(2)), used = std::stoul(arguments.at(3));
  TwUnits::UnitManager* units = TwUnits::UnitManager::Instance();
  ut_system* system = twbench::udunitsSystem();
  FreshSpellings spellings(text);
  std::vector<std::string> texts;
  spellings.nextBatch(texts, made);
  std::size_t resolved = 0;
  for (std::size_t i = 0; i < used && i < texts.size(); ++i) {
    if (side == "ours") {
      resolved += units->verifyUnitCompositionString(texts[i]) != nullptr;
    } else {
      ut_unit* unit = ut_parse(system, text, UT_ASCII);
      resolved += unit != nullptr;
      ut_free(unit);
    }
  }
  report["resolved"] = static_cast<double>(resolved);
}

// `cached_text_bytes short|long <n>` makes n fresh spellings of the text, then verifies
// them all: the resident set's growth per text is what the cache keeps for one.
TW_CHILD_TASK(cached_text_bytes) {
  const char* text = arguments.at(0) == "long" ? kLongText : kShortText;
  const std::size_t count = std::stoul(arguments.at(1));
  TwUnits::UnitManager* units = TwUnits::UnitManager::Instance();
  FreshSpellings spellings(text);
  std::vector<std::string> texts;
  spellings.nextBatch(texts, count);
  double length = 0.0;
  for (const std::string& spelled : texts) length += static_cast<double>(spelled.size());
  const double before = twbench::residentKiB();
  for (const std::string& spelled : texts) units->verifyUnitCompositionString(spelled);
  report["bytes_per_text"] =
      (twbench::residentKiB() - before) * 1024.0 / static_cast<double>(count);
  report["text_length"] = length / static_cast<double>(count);
}

// The memory of 100,000 cached texts, in a fresh process; the figures are counters.
void BM_CachedTextMemory(benchmark::State& state, const char* text) {
  twbench::ChildReport report;
  for (auto _ : state) {
    try {
      report = twbench::runInChild("cached_text_bytes", {text, "100000"});
    } catch (const std::exception& error) {
      state.SkipWithError(error.what());
      break;
    }
  }
  if (report.empty()) return;
  state.counters["bytes_per_text"] = twbench::figure(report, "bytes_per_text");
  state.counters["text_length"] = twbench::figure(report, "text_length");
}

// The argument names are the summary's row keys (bench/support/SideBySide.cpp).
BENCHMARK_CAPTURE(BM_CachedTextMemory, short, "short")->Iterations(1);
BENCHMARK_CAPTURE(BM_CachedTextMemory, long, "long")->Iterations(1);
BENCHMARK_CAPTURE(BM_FirstSight, short, kShortText)->Iterations(kFirstSightIterations);
BENCHMARK_CAPTURE(BM_FirstSight, long, kLongText)->Iterations(kFirstSightIterations);
BENCHMARK_CAPTURE(BM_Udunits_Parse, short, kShortText);
BENCHMARK_CAPTURE(BM_Udunits_Parse, long, kLongText);

}  // namespace
