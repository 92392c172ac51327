// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The media service of a decoder.

#include "decoderservice.h"

#include "decodecontrol.h"
#include "surfacecontrol.h"

#include <QtMultimedia/qvideorenderercontrol.h>

/*!
    \class DecoderService

    There is one control of each kind, which the service owns, and which serves whoever requests it.
*/

// In the order in which they need each other: the last is destroyed first.
struct DecoderService::Parts
{
    SurfaceGroup surfaces;
    SurfaceControl<QVideoRendererControl> rendererControl {&surfaces};
    DecodeControl decodeControl {&surfaces};
};

DecoderService::DecoderService(QObject *parent)
    : QMediaService(parent), m_parts(std::make_unique<Parts>())
{
}

/*! Ends a run, and takes the surface off. */
DecoderService::~DecoderService() = default;

/*! Null for a control that the service doesn't have. */
QMediaControl *DecoderService::requestControl(const char *name)
{
    if (qstrcmp(name, QFLDecodeControl_iid) == 0)
        return &m_parts->decodeControl;
    if (qstrcmp(name, QVideoRendererControl_iid) == 0)
        return &m_parts->rendererControl;
    return nullptr;
}

/*! Does nothing: the controls stay until the service goes. */
void DecoderService::releaseControl(QMediaControl *) { }
