// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The control of a decoder service that turns encoded frames into raw ones.

#ifndef QFLDECODECONTROL_H
#define QFLDECODECONTROL_H

#include "qflencodedvideoframe.h"
#include "qfldecoder.h"

#include <QtMultimedia/qmediacontrol.h>

class Q_FACELINK_EXPORT QFLDecodeControl : public QMediaControl
{
    Q_OBJECT

public:
    ~QFLDecodeControl() override;

    virtual QStringList supportedCodecs(bool hardwareOnly) const = 0;
    virtual bool isFormatSupported(const QVideoEncoderSettings &settings) const = 0;

    virtual bool start(const QVideoEncoderSettings &settings) = 0;
    virtual QVideoEncoderSettings videoSettings() const = 0;
    virtual QVideoSurfaceFormat outputFormat() const = 0;
    virtual bool decode(const QFLEncodedVideoFrame &frame) = 0;
    virtual void drain() = 0;
    virtual void flush() = 0;
    virtual void stop() = 0;

    virtual QFLDecoder::Status status() const = 0;

Q_SIGNALS:
    void statusChanged(QFLDecoder::Status status);
    void error(QFLDecoder::Error code, const QString &error);
    void outputFormatChanged(const QVideoSurfaceFormat &format);
    void endOfStream();

protected:
    explicit QFLDecodeControl(QObject *parent = nullptr);
};

#define QFLDecodeControl_iid "facelink.decodecontrol/1.0"
Q_MEDIA_DECLARE_CONTROL(QFLDecodeControl, QFLDecodeControl_iid)

#endif
