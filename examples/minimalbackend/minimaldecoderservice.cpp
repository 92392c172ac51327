// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The decoder service: the controls of one decoder.

#include "minimaldecoderservice.h"

#include "minimaldecodecontrol.h"
#include "minimalrenderercontrol.h"

MinimalDecoderService::MinimalDecoderService()
    : QMediaService(nullptr),
      m_rendererControl(new MinimalRendererControl(this)),
      m_decodeControl(new MinimalDecodeControl(m_rendererControl, this))
{
}

MinimalDecoderService::~MinimalDecoderService()
{
    m_decodeControl->stop();
}

QMediaControl *MinimalDecoderService::requestControl(const char *identifier)
{
    if (qstrcmp(identifier, QFLDecodeControl_iid) == 0)
        return m_decodeControl;
    if (qstrcmp(identifier, QVideoRendererControl_iid) == 0)
        return m_rendererControl;
    return nullptr;
}

// The controls are the service's for its whole life, however often they are requested.
void MinimalDecoderService::releaseControl(QMediaControl *) { }
