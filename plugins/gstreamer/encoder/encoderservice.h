// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The encoder service.

#ifndef ENCODERSERVICE_H
#define ENCODERSERVICE_H

#include <QtMultimedia/qmediaservice.h>

class CodecQueueControl;
class EncodeControl;
class EncodedVideoSourceControl;
class EncoderSettingsControl;

class EncoderService : public QMediaService
{
    Q_OBJECT

public:
    explicit EncoderService(QObject *parent = nullptr);
    ~EncoderService() override;

    QMediaControl *requestControl(const char *name) override;
    void releaseControl(QMediaControl *control) override;

private:
    EncodeControl *m_encodeControl;
    EncoderSettingsControl *m_settingsControl;
    EncodedVideoSourceControl *m_sourceControl;
    CodecQueueControl *m_queueControl;
};

#endif
