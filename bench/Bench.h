// Measuring for the benchmarks: how long an operation takes, beside a peer that does the like.
//
// A benchmark prints lines such as
//   text copy: 5.1 ns, atomic pair 5.0 ns, ratio 1.02 (goal 1.10)
// and never fails. A ratio below 1 means faster than the peer. One thread.
#pragma once

#include <chrono>
#include <cstdint>
#include <cstdio>

namespace Bench {

inline constexpr int runs = 15;

// Keeps the compiler from dropping a result that nobody reads.
template <typename Value>
void keep(const Value& value) {
#if defined(__GNUC__)
  asm volatile("" : : "g"(&value) : "memory");
#else
  static volatile const void* sink;
  sink = &value;
#endif
}

// Nanoseconds for `repeats` calls of the operation.
template <typename Operation>
double timeOf(Operation& operation, int64_t repeats) {
  const auto start = std::chrono::steady_clock::now();
  for (int64_t i = 0; i < repeats; ++i) operation();
  const auto end = std::chrono::steady_clock::now();
  return std::chrono::duration<double, std::nano>(end - start).count();
}

// How many calls fill about four milliseconds.
template <typename Operation>
int64_t repeatsFor(Operation& operation) {
  int64_t repeats = 1;
  while (timeOf(operation, repeats) < 1e6 && repeats < int64_t{1} << 40) repeats *= 2;
  return repeats * 4;
}

struct Pair {
  double own;
  double peer;
};

// Nanoseconds per call of both, the best of several runs that take turns, so that a busy machine
// slows both alike.
template <typename Own, typename Peer>
Pair measure(Own&& own, Peer&& peer) {
  const int64_t ownRepeats = repeatsFor(own);
  const int64_t peerRepeats = repeatsFor(peer);
  Pair best{1e300, 1e300};
  for (int run = 0; run < runs; ++run) {
    const double ownTime = timeOf(own, ownRepeats) / static_cast<double>(ownRepeats);
    const double peerTime = timeOf(peer, peerRepeats) / static_cast<double>(peerRepeats);
    if (ownTime < best.own) best.own = ownTime;
    if (peerTime < best.peer) best.peer = peerTime;
  }
  return best;
}

// Nanoseconds per call, the best of several runs.
template <typename Operation>
double nanoseconds(Operation&& operation) {
  return measure(operation, [] {}).own;
}

// The goal is the largest ratio that is good enough.
inline void report(const char* name, const char* unit, double own, const char* peerName,
                   double peer, double goal) {
  std::printf("%s: %.1f %s, %s %.1f %s, ratio %.2f (goal %.2f)\n", name, own, unit, peerName, peer,
              unit, own / peer, goal);
}

template <typename Own, typename Peer>
void compare(const char* name, const char* peerName, double goal, Own&& own, Peer&& peer) {
  const Pair pair = measure(own, peer);
  report(name, "ns", pair.own, peerName, pair.peer, goal);
}

} // namespace Bench
