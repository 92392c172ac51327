// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The media service of a decoder.

#include "decoderservice.h"

#include "decodecontrol.h"
#include "renderercontrol.h"
#include "surfacegroup.h"

/*!
    \class DecoderService

    Owns one decode control and one renderer control for its whole life. Every request gives the
    same object; when as many releases as requests were made, the run ends or the surface is let
    go.
*/

DecoderService::DecoderService(QObject *parent)
    : QMediaService(parent),
      m_surfaces(std::make_unique<SurfaceGroup>()),
      m_rendererControl(std::make_unique<RendererControl>(m_surfaces.get())),
      m_decodeControl(std::make_unique<DecodeControl>(m_surfaces.get()))
{
}

DecoderService::~DecoderService() = default;

/*! Null for an identifier other than those of the two controls. */
QMediaControl *DecoderService::requestControl(const char *name)
{
    if (qstrcmp(name, QFLDecodeControl_iid) == 0) {
        ++m_decodeRequests;
        return m_decodeControl.get();
    }
    if (qstrcmp(name, QVideoRendererControl_iid) == 0) {
        ++m_rendererRequests;
        return m_rendererControl.get();
    }
    return nullptr;
}

void DecoderService::releaseControl(QMediaControl *control)
{
    if (!control)
        return;
    if (control == m_decodeControl.get() && --m_decodeRequests == 0)
        m_decodeControl->stop();
    else if (control == m_rendererControl.get() && --m_rendererRequests == 0)
        m_rendererControl->setSurface(nullptr);
}
