// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

// The ui layer: widgets and window controllers of the settings bundle, over the core layer.
