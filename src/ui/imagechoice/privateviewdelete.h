// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

// What the private image view needs from its owner, the settings window: after every save of
// the private setting the owner rewrites the plugin's global settings.
class PrivateViewDelete
{
public:
    virtual ~PrivateViewDelete() = default;
    virtual void saveGlobalSettings() = 0;
};
