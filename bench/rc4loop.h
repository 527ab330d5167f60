// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <cstddef>
#include <utility>

// The bare RC4 loop the scrambler is measured against: key schedule and stream over the bytes,
// nothing else. One copy for the reference program and the in-process comparison.
namespace Rc4Loop {

inline void run(const unsigned char *key, int keyLength, const unsigned char *in,
                unsigned char *out, std::size_t size)
{
    unsigned char s[256];
    for (int x = 0; x < 256; ++x)
        s[x] = static_cast<unsigned char>(x);
    unsigned char j = 0;
    for (int x = 0; x < 256; ++x) {
        j = static_cast<unsigned char>(j + s[x] + key[x % keyLength]);
        std::swap(s[x], s[j]);
    }
    unsigned char i = 0;
    j = 0;
    for (std::size_t x = 0; x < size; ++x) {
        i = static_cast<unsigned char>(i + 1);
        j = static_cast<unsigned char>(j + s[i]);
        std::swap(s[i], s[j]);
        out[x] = in[x] ^ s[static_cast<unsigned char>(s[i] + s[j])];
    }
}

} // namespace Rc4Loop
