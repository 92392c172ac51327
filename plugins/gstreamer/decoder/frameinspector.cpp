// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Looks into the bytes of an encoded frame.

#include "frameinspector.h"

#include "av1inspector.h"
#include "nalunitinspector.h"
#include "vp8inspector.h"
#include "vp9inspector.h"

/*!
    \class FrameInspector

    Tells the frames at which decoding can begin from those that build on others. There is one
    subclass for each codec. The bytes come from the network, so any number of any values is judged.
*/

/*!
    \fn FrameInspector::Kind FrameInspector::inspect(QByteArray *data)

    What the frame in \a data, which isn't empty, says that it is. Only the headers are read: the
    rest may still be damaged. What a key frame lacks may be added to it.
*/

FrameInspector::~FrameInspector() = default;

/*! For a new stream; null for a codec that isn't known. */
std::unique_ptr<FrameInspector> FrameInspector::create(const QString &codec)
{
    if (codec == QLatin1String("H264"))
        return std::make_unique<NalUnitInspector>(NalUnitInspector::H264);
    if (codec == QLatin1String("H265"))
        return std::make_unique<NalUnitInspector>(NalUnitInspector::H265);
    if (codec == QLatin1String("VP8"))
        return std::make_unique<Vp8Inspector>();
    if (codec == QLatin1String("VP9"))
        return std::make_unique<Vp9Inspector>();
    if (codec == QLatin1String("AV1"))
        return std::make_unique<Av1Inspector>();
    return nullptr;
}
