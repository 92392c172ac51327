// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The base of the sinks that receive a stream of encoded video frames.

#ifndef QFLENCODEDVIDEOSINK_H
#define QFLENCODEDVIDEOSINK_H

#include "qflsink.h"

#include <QtMultimedia/qmediaencodersettings.h>

class QFLEncodedVideoFrame;
class QFLEncodedVideoSinkPrivate;

class Q_FACELINK_EXPORT QFLEncodedVideoSink : public QFLSink
{
public:
    QFLEncodedVideoSink();
    ~QFLEncodedVideoSink() override;

    static QFLEncodedVideoSink *fromSink(QFLSink *sink);

    QVideoEncoderSettings videoEncoderSettings() const;

    virtual bool isFormatSupported(const QVideoEncoderSettings &settings) const = 0;
    virtual bool start(const QVideoEncoderSettings &settings);
    virtual bool encodedVideoFrame(const QFLEncodedVideoFrame &frame) = 0;
    virtual void drain();
    virtual void stop();

protected:
    explicit QFLEncodedVideoSink(QFLEncodedVideoSinkPrivate &dd);

private:
    QScopedPointer<QFLEncodedVideoSinkPrivate> d_ptr;
};

#define QFLEncodedVideoSink_iid "facelink.encodedvideosink/1.0"
Q_DECLARE_INTERFACE(QFLEncodedVideoSink, QFLEncodedVideoSink_iid)

#endif
