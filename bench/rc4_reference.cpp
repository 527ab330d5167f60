// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// Reference figure for the scrambler: a bare RC4 loop over the same bytes, nothing else (no text
// conversion, no encoding), best of as many rounds as the scrambler gets, with the process's peak
// memory.
//   rc4_reference TEXT
#include "rc4loop.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <limits>
#include <sys/resource.h>
#include <utility>
#include <vector>

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: rc4_reference TEXT\n");
        return 2;
    }
    std::ifstream file(argv[1], std::ios::binary);
    const std::vector<unsigned char> in((std::istreambuf_iterator<char>(file)),
                                        std::istreambuf_iterator<char>());
    if (!file.good() && !file.eof()) {
        std::fprintf(stderr, "cannot read %s\n", argv[1]);
        return 2;
    }
    std::vector<unsigned char> out(in.size());
    const unsigned char key[] = "0a1B2c3D";
    long long best = std::numeric_limits<long long>::max();
    for (int round = 0; round < 20; ++round) {
        const auto start = std::chrono::steady_clock::now();
        Rc4Loop::run(key, 8, in.data(), out.data(), in.size());
        const auto ns = std::chrono::duration_cast<std::chrono::nanoseconds>(
                            std::chrono::steady_clock::now() - start)
                            .count();
        best = std::min<long long>(best, ns);
    }
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const double seconds = double(best) / 1e9;
    std::printf("%-28s %10.1f MB/s %8.2f ms  peak %7.1f MiB\n", "bare RC4 loop (reference)",
                double(in.size()) / 1e6 / seconds, seconds * 1e3, double(usage.ru_maxrss) / 1024.0);
    // Keeps the work observable.
    std::printf("checksum %u\n", unsigned(out.empty() ? 0 : out[out.size() / 2]));
    return 0;
}
