// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Lets streaming threads call an object until it closes the way in.

#ifndef GATE_H
#define GATE_H

#include <QtCore/qmutex.h>

#include <glib.h>

#include <functional>
#include <memory>

class Gate
{
public:
    bool pass(const std::function<void()> &call);
    void close();

private:
    QMutex m_mutex;
    bool m_isOpen = true;
};

template<typename Function> struct GatedCall
{
    std::shared_ptr<Gate> gate;
    std::function<Function> function;

    static GatedCall *from(gpointer data) { return static_cast<GatedCall *>(data); }
    static void destroy(gpointer data) { delete from(data); }
};

#endif
