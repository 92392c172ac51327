// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The encoder service.

#include "encoderservice.h"

#include "codecqueuecontrol.h"
#include "encodecontrol.h"
#include "encodedvideosourcecontrol.h"
#include "encodersettingscontrol.h"

EncoderService::EncoderService(QObject *parent)
    : QMediaService(parent),
      m_encodeControl(new EncodeControl(this)),
      m_settingsControl(new EncoderSettingsControl(m_encodeControl, this)),
      m_sourceControl(new EncodedVideoSourceControl(m_encodeControl, this)),
      m_queueControl(new CodecQueueControl(m_encodeControl, this))
{
}

/*! Ends a run while all controls are still there, so that the sinks are stopped. */
EncoderService::~EncoderService()
{
    m_encodeControl->stop();
}

/*! Null for a control that the service doesn't have. */
QMediaControl *EncoderService::requestControl(const char *name)
{
    const QByteArray identifier(name);
    if (identifier == QFLEncodeControl_iid)
        return m_encodeControl;
    if (identifier == QVideoEncoderSettingsControl_iid)
        return m_settingsControl;
    if (identifier == QFLEncodedVideoSourceControl_iid)
        return m_sourceControl;
    if (identifier == QFLCodecQueueControl_iid)
        return m_queueControl;
    return nullptr;
}

/*!
    The controls belong to the service and serve whoever requests them, several at a time; they stay
    until the service goes.
*/
void EncoderService::releaseControl(QMediaControl *) { }
