#include "comparison/Measurement.h"

#include <time.h>

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "comparison/Allocations.h"

namespace commandfilter::benchmarks {

namespace {

constexpr std::size_t kLeastRounds = 7;
constexpr double kLongestMilliseconds = 4000;

double processorNanoseconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e9 + static_cast<double>(now.tv_nsec);
}

double timeOf(Contender& contender, std::size_t times) {
  const double start = processorNanoseconds();
  contender.run(times);
  return processorNanoseconds() - start;
}

double allocationsOf(Contender& contender, std::size_t times) {
  const std::uint64_t before = Allocations::count();
  contender.run(times);
  return static_cast<double>(Allocations::count() - before) / static_cast<double>(times);
}

void requireEqual(const std::string& name, const char* who, Datum theirs, Datum ours) {
  theirs.sortKeys();
  ours.sortKeys();
  if (theirs == ours) return;
  throw std::runtime_error(name + ": " + who + " gives " + describe(theirs) + ", the engine " +
                           describe(ours));
}

// How many operations fill the time. Found by doubling, which warms the caches as well.
std::size_t timesToFill(Contender& contender, double nanoseconds) {
  std::size_t times = 1;
  while (true) {
    const double taken = timeOf(contender, times);
    if (taken >= nanoseconds) return times;
    if (taken >= nanoseconds / 8) {
      return static_cast<std::size_t>(static_cast<double>(times) * nanoseconds / taken) + 1;
    }
    times *= 2;
  }
}

}  // namespace

Verdict Row::verdict() const {
  if (!limit) return Verdict::Informs;
  if (ratioToLua.median <= *limit) return Verdict::Reached;
  return ratioToLua.first <= *limit ? Verdict::WithinNoise : Verdict::Missed;
}

Contenders compared(const Case& work) {
  Contenders contenders = work.make();
  requireEqual(work.name, "Lua", contenders.lua->result(), contenders.ours->result());
  if (contenders.plain) {
    requireEqual(work.name, "C++", contenders.plain->result(), contenders.ours->result());
  }
  return contenders;
}

Row measure(const Case& work, const Effort& effort) {
  const Contenders contenders = compared(work);
  std::vector<Contender*> all{contenders.ours.get(), contenders.lua.get()};
  if (contenders.plain) all.push_back(contenders.plain.get());
  std::vector<std::size_t> times(all.size());
  std::vector<std::vector<double>> samples(all.size());
  double roundMilliseconds = 0;
  for (std::size_t i = 0; i < all.size(); ++i) {
    times[i] = timesToFill(*all[i], effort.millisecondsEach * 1e6);
    roundMilliseconds += timeOf(*all[i], times[i]) / 1e6;
  }
  const auto affordable = static_cast<std::size_t>(kLongestMilliseconds / roundMilliseconds);
  const std::size_t rounds = std::clamp(affordable, kLeastRounds, effort.rounds);
  for (std::size_t round = 0; round < rounds; ++round) {
    for (std::size_t i = 0; i < all.size(); ++i) {
      const std::size_t place = (round + i) % all.size();
      samples[place].push_back(timeOf(*all[place], times[place]) /
                               static_cast<double>(times[place]));
    }
  }
  const auto cost = [&](std::size_t place) {
    return Cost{quartiles(samples[place]).median, allocationsOf(*all[place], times[place])};
  };
  Row row{work.name,   work.limit,   cost(0),
          cost(1),     std::nullopt, pairedRatios(samples[0], samples[1]),
          std::nullopt};
  if (contenders.plain) {
    row.plain = cost(2);
    row.ratioToPlain = pairedRatios(samples[0], samples[2]);
  }
  return row;
}

}  // namespace commandfilter::benchmarks
