// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// How the frames of a codec enter a decoder pipeline.

#ifndef STREAMFORMAT_H
#define STREAMFORMAT_H

#include <QtCore/qstring.h>

struct StreamFormat
{
    const char *codec;
    const char *caps;
    const char *parser;
    int maximumReordering;

    static const StreamFormat *of(const QString &codec);
};

#endif
