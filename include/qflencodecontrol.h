// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The control of an encoder service that turns raw frames into encoded ones.

#ifndef QFLENCODECONTROL_H
#define QFLENCODECONTROL_H

#include "qflencodedvideoframe.h"
#include "qflencoder.h"

#include <QtMultimedia/qmediacontrol.h>

class Q_FACELINK_EXPORT QFLEncodeControl : public QMediaControl
{
    Q_OBJECT

public:
    ~QFLEncodeControl() override;

    virtual QStringList supportedCodecs(bool hardwareOnly) const = 0;
    virtual QList<QVideoFrame::PixelFormat> supportedPixelFormats() const = 0;
    virtual QFLEncoder::Status status() const = 0;

    virtual bool start(const QVideoSurfaceFormat &format) = 0;
    virtual void drain() = 0;
    virtual void flush() = 0;
    virtual void stop() = 0;

public Q_SLOTS:
    virtual bool encode(const QVideoFrame &frame) = 0;

Q_SIGNALS:
    void encodedVideoFrame(QFLEncodedVideoFrame frame);
    void statusChanged(QFLEncoder::Status status);
    void error(QFLEncoder::Error error, const QString &errorDescription);
    void endOfStream();

protected:
    explicit QFLEncodeControl(QObject *parent = nullptr);
};

#define QFLEncodeControl_iid "facelink.encodecontrol/1.0"
Q_MEDIA_DECLARE_CONTROL(QFLEncodeControl, QFLEncodeControl_iid)

#endif
