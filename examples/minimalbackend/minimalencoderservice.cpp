// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The encoder service: the controls of one encoder.

#include "minimalencoderservice.h"

#include "minimalencodecontrol.h"
#include "minimalsettingscontrol.h"
#include "minimalsourcecontrol.h"

//! [service]
MinimalEncoderService::MinimalEncoderService()
    : QMediaService(nullptr),
      m_encodeControl(new MinimalEncodeControl(this)),
      m_settingsControl(new MinimalSettingsControl(m_encodeControl, this)),
      m_sourceControl(new MinimalSourceControl(m_encodeControl, this))
{
}

// While the controls are all still there, so that the sinks are stopped.
MinimalEncoderService::~MinimalEncoderService()
{
    m_encodeControl->stop();
}

QMediaControl *MinimalEncoderService::requestControl(const char *identifier)
{
    if (qstrcmp(identifier, QFLEncodeControl_iid) == 0)
        return m_encodeControl;
    if (qstrcmp(identifier, QVideoEncoderSettingsControl_iid) == 0)
        return m_settingsControl;
    if (qstrcmp(identifier, QFLEncodedVideoSourceControl_iid) == 0)
        return m_sourceControl;
    return nullptr;
}

// The controls are the service's for its whole life, however often they are requested.
void MinimalEncoderService::releaseControl(QMediaControl *) { }
//! [service]
