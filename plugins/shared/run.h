// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tells after a call to others whether what made it still goes on.

#ifndef RUN_H
#define RUN_H

#include <QtCore/qglobal.h>

#include <memory>

class Run
{
public:
    class Watch
    {
    public:
        bool operator()() const { return !m_token.expired(); }

    private:
        friend class Run;

        std::weak_ptr<const char> m_token;
    };

    Run();
    ~Run();

    void begin();
    Watch watch() const;
    Watch watchOwner() const;

private:
    Q_DISABLE_COPY(Run)

    std::shared_ptr<const char> m_token;
    const std::shared_ptr<const char> m_ownerToken;
};

#endif
