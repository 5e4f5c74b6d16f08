#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// The generated catalogue of the benchmarks: products of a small bead and craft shop with
// every column filled the way a real catalogue has them (names, descriptions, five cost
// tiers, categories, suppliers, stock counts, some discontinued), the same for every build.

// A small fixed-seed generator (splitmix64), so that every build makes the same catalogue.
class Random {
  public:
    explicit Random(std::uint64_t seed) : state_(seed) {}
    std::uint64_t next() {
        std::uint64_t z = (state_ += 0x9e3779b97f4a7c15ULL);
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ULL;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebULL;
        return z ^ (z >> 31);
    }
    int below(int n) { return static_cast<int>(next() % static_cast<std::uint64_t>(n)); }
    bool chance(int percent) { return below(100) < percent; }
    template <class T, std::size_t N>
    const T& pick(const T (&items)[N]) {
        return items[below(static_cast<int>(N))];
    }

  private:
    std::uint64_t state_;
};

// Builds a catalogue at `path` (program folder `appDir`) and fills Products with `rows`
// generated products in one transaction; returns their stock numbers in the order stored.
std::vector<std::string> generateCatalogue(const std::string& path, const std::string& appDir,
                                           int rows);
