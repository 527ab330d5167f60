// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#include "navigationpolicy.h"

namespace NavigationPolicy {

Decision decide(const QString &scheme, const std::function<bool()> &ignoreOpenURL)
{
    if (scheme == QLatin1String("file"))
        return Decision::Use;
    if (ignoreOpenURL && ignoreOpenURL())
        return Decision::Use;
    if (scheme == QLatin1String("http") || scheme == QLatin1String("https"))
        return Decision::IgnoreAndOpenOutside;
    return Decision::Ignore;
}

} // namespace NavigationPolicy
