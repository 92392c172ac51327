// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The media object that encodes raw video frames.

#ifndef QFLENCODER_H
#define QFLENCODER_H

#include "qflencodedvideoframe.h"
#include "qflsource.h"

#include <QtMultimedia/qmediabindableinterface.h>
#include <QtMultimedia/qmediaencodersettings.h>
#include <QtMultimedia/qmediaobject.h>
#include <QtMultimedia/qvideoframe.h>
#include <QtMultimedia/qvideosurfaceformat.h>

class QFLEncoderPrivate;

class Q_FACELINK_EXPORT QFLEncoder : public QMediaObject,
                                     public QMediaBindableInterface,
                                     public QFLSource
{
    Q_OBJECT
    Q_INTERFACES(QMediaBindableInterface QFLSource)
    Q_PROPERTY(QFLEncoder::Status status READ status NOTIFY statusChanged)
    Q_PROPERTY(QFLEncoder::Error error READ error NOTIFY errorChanged)
    Q_ENUMS(Status Error)

public:
    enum Status : int {
        UnavailableStatus = 0,
        UnloadedStatus = 1,
        LoadingStatus = 2,
        LoadedStatus = 3,
        StoppingStatus = 4,
        StartingStatus = 5,
        StartedStatus = 6
    };

    enum Error : int {
        NoError = 0,
        ResourceError = 1,
        FormatError = 2,
        ConsumerError = 3,
        HardwareError = 4
    };

    explicit QFLEncoder(QObject *parent = nullptr);
    ~QFLEncoder() override;

    QMediaObject *mediaObject() const override;
    bool setMediaObject(QMediaObject *object) override;

    bool addSink(QFLSink *sink) override;
    bool removeSink(QFLSink *sink) override;

    Status status() const;
    Error error() const;
    QString errorString() const;

    QStringList supportedCodecs(bool hardwareOnly) const;
    QList<QVideoFrame::PixelFormat> supportedPixelFormats() const;
    QList<qreal> supportedFrameRates(const QVideoEncoderSettings &settings,
                                     bool *continuous = nullptr) const;
    QList<QSize> supportedResolutions(const QVideoEncoderSettings &settings,
                                      bool *continuous = nullptr) const;

    QVideoEncoderSettings videoSettings() const;
    void setVideoSettings(const QVideoEncoderSettings &settings);

    bool start(const QVideoSurfaceFormat &format);
    bool encode(const QVideoFrame &frame);
    void drain();
    void flush();
    void stop();

Q_SIGNALS:
    void encodedVideoFrame(QFLEncodedVideoFrame frame);
    void statusChanged(QFLEncoder::Status status);
    void errorChanged(QFLEncoder::Error error);

private:
    Q_DISABLE_COPY(QFLEncoder)
    Q_DECLARE_PRIVATE(QFLEncoder)
    Q_PRIVATE_SLOT(d_func(), void _q_error(QFLEncoder::Error, const QString &))
};

Q_DECLARE_METATYPE(QFLEncoder::Status)
Q_DECLARE_METATYPE(QFLEncoder::Error)

#endif
