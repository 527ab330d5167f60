// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QtGlobal>

// Global logging functions of the bundle, printf-style. A null format is safe everywhere.
// logSave appends a time-stamped line to the rotating "Log.txt" in the per-user data folder;
// logError and logWarn write "Error:..." and "Warn:..." to the console; logDebug does nothing.
void logSave(const char *format, ...) Q_ATTRIBUTE_FORMAT_PRINTF(1, 2);
void logError(const char *format, ...) Q_ATTRIBUTE_FORMAT_PRINTF(1, 2);
void logWarn(const char *format, ...) Q_ATTRIBUTE_FORMAT_PRINTF(1, 2);
void logDebug(const char *format, ...) Q_ATTRIBUTE_FORMAT_PRINTF(1, 2);
