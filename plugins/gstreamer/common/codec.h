// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What the backend knows about each codec.

#ifndef CODEC_H
#define CODEC_H

#include <QtCore/qbytearray.h>
#include <QtCore/qsize.h>
#include <QtCore/qstring.h>
#include <QtCore/qvector.h>

#include <memory>

class FrameInspector;

struct Codec
{
    const char *name = nullptr;
    const char *elementCaps = nullptr;
    const char *streamCaps = nullptr;
    const char *encoderTail = nullptr;
    const char *parser = nullptr;
    int maximumReordering = 0;
    std::unique_ptr<FrameInspector> (*createInspector)() = nullptr;
    QSize (*keyFrameSize)(const QByteArray &frame) = nullptr;

    std::unique_ptr<FrameInspector> inspector() const;

    static const QVector<Codec> &all();
    static const Codec *find(const QString &name);
};

#endif
