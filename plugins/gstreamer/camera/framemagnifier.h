// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Enlarges the middle of frames.

#ifndef FRAMEMAGNIFIER_H
#define FRAMEMAGNIFIER_H

#include "gstpointers.h"

#include <QtCore/qglobal.h>

#include <gst/video/video.h>

#include <atomic>

class FrameMagnifier
{
public:
    qreal factor() const;
    void setFactor(qreal factor);

    GstBufferPointer magnify(GstBuffer *buffer, const GstVideoInfo &info);

private:
    struct ConverterFree
    {
        void operator()(GstVideoConverter *converter) const { gst_video_converter_free(converter); }
    };

    bool prepare(const GstVideoInfo &info, qreal factor);

    std::atomic<qreal> m_factor = 1;

    // Used on the streaming thread only.
    std::unique_ptr<GstVideoConverter, ConverterFree> m_converter;
    GstVideoInfo m_info;
    qreal m_preparedFactor = 1;
};

#endif
