// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QString>

#include <functional>

// How the preview treats a navigation. The preview shows the workspace's own page: file URLs load
// inside it, web links go to the user's default browser, anything else goes nowhere.
namespace NavigationPolicy {

enum class Decision {
    Use,                 // let the navigation proceed inside the preview
    Ignore,              // refuse it
    IgnoreAndOpenOutside // refuse it and hand the URL to the default browser
};

// Decides a navigation to a URL with the given scheme. The scheme tests are exact and
// case-sensitive: "HTTP" is not a web scheme here. ignoreOpenURL is asked only for URLs that are
// not files; true lets the preview follow such links itself.
Decision decide(const QString &scheme, const std::function<bool()> &ignoreOpenURL);

} // namespace NavigationPolicy
