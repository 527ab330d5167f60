// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>
#include <optional>

// The book's copy of the plugin settings is not stored as readable script: the text becomes a
// string of letters that carries its own random key at the end, from which the book's loader
// restores it. Nothing is stored between calls; every scramble makes a fresh key.

// The standard Base64 alphabet; the scrambled text uses its first 48 letters, "A" to "v".
extern const char myBase64[65];

// The RC4 key schedule over a state of n bytes; keyLength 0 schedules with an all-zero key.
void RC4C_Init(unsigned char *state, const unsigned char *key, quint8 keyLength, quint32 n);

// data XOR the RC4 keystream of key (UTF-8, its length taken modulo 256) over an n-byte state.
// A state size of 0 has no keystream and answers the data unchanged.
QByteArray rc4CryptData(const QByteArray &data, const QString &key, quint32 n);

// Two letters per UTF-8 byte of text, then the eight hexadecimal key characters, then "_".
QString scrambleScriptString(const QString &text);

// The text that scrambleScriptString was given, or nullopt when scrambled is not of its form
// (no final "_", an odd number of letters, a letter outside its third of the alphabet).
std::optional<QString> unscrambleScriptString(QStringView scrambled);
