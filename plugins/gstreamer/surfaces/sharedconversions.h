// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Converts each frame once for all surfaces that need the same format.

#ifndef SHAREDCONVERSIONS_H
#define SHAREDCONVERSIONS_H

#include "frameconverter.h"

#include <map>

class SharedConversions
{
public:
    QVideoSurfaceFormat prepare(const QVideoSurfaceFormat &input,
                                QVideoFrame::PixelFormat outputFormat);
    QVideoFrame convert(const QVideoFrame &frame, QVideoFrame::PixelFormat outputFormat);
    void releaseFrames();

    int count() const;
    void resetCount();

private:
    struct Conversion
    {
        std::unique_ptr<FrameConverter> converter;
        QVideoFrame source;
        QVideoFrame result;
    };

    QVideoSurfaceFormat m_input;
    std::map<QVideoFrame::PixelFormat, Conversion> m_conversions;
    int m_count = 0;
};

#endif
