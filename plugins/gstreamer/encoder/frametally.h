// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Counts what became of the raw frames that an encoder was offered.

#ifndef FRAMETALLY_H
#define FRAMETALLY_H

#include <QtCore/qglobal.h>

#include <atomic>

struct FrameTally
{
    std::atomic<quint64> encoded = 0;
    std::atomic<quint64> refused = 0;
    std::atomic<quint64> dropped = 0;
    std::atomic<quint64> skipped = 0;
};

#endif
