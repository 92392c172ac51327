// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The media service of an encoder.

#include "encoderservice.h"

#include "codecqueuecontrol.h"
#include "encodecontrol.h"
#include "encodedvideosourcecontrol.h"
#include "encodersettingscontrol.h"

/*!
    \class EncoderService

    There is one control of each kind, which the service owns, and which serves whoever requests it.
*/

// In the order in which they need each other: the last is destroyed first.
struct EncoderService::Parts
{
    EncodeControl encodeControl;
    EncoderSettingsControl settingsControl {&encodeControl};
    EncodedVideoSourceControl sourceControl {&encodeControl};
    CodecQueueControl queueControl {&encodeControl};
};

EncoderService::EncoderService(QObject *parent)
    : QMediaService(parent), m_parts(std::make_unique<Parts>())
{
}

/*! Ends a run while all controls are still there, so that the sinks are stopped. */
EncoderService::~EncoderService()
{
    m_parts->encodeControl.stop();
}

/*! Null for a control that the service doesn't have. */
QMediaControl *EncoderService::requestControl(const char *name)
{
    if (qstrcmp(name, QFLEncodeControl_iid) == 0)
        return &m_parts->encodeControl;
    if (qstrcmp(name, QVideoEncoderSettingsControl_iid) == 0)
        return &m_parts->settingsControl;
    if (qstrcmp(name, QFLEncodedVideoSourceControl_iid) == 0)
        return &m_parts->sourceControl;
    if (qstrcmp(name, QFLCodecQueueControl_iid) == 0)
        return &m_parts->queueControl;
    return nullptr;
}

/*! Does nothing: the controls stay until the service goes. */
void EncoderService::releaseControl(QMediaControl *) { }
