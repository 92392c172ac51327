// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The media object that decodes encoded video frames.

#ifndef QFLDECODER_H
#define QFLDECODER_H

#include "qflglobal.h"

#include <QtMultimedia/qmediabindableinterface.h>
#include <QtMultimedia/qmediaencodersettings.h>
#include <QtMultimedia/qmediaobject.h>
#include <QtMultimedia/qvideosurfaceformat.h>

QT_BEGIN_NAMESPACE
class QAbstractVideoSurface;
QT_END_NAMESPACE

class QFLDecoderPrivate;
class QFLEncodedVideoFrame;

class Q_FACELINK_EXPORT QFLDecoder : public QMediaObject, public QMediaBindableInterface
{
    Q_OBJECT
    Q_INTERFACES(QMediaBindableInterface)
    Q_PROPERTY(QFLDecoder::Status status READ status NOTIFY statusChanged)
    Q_PROPERTY(QFLDecoder::Error error READ error NOTIFY errorChanged)
    Q_ENUMS(Status Error)

public:
    enum Status : int {
        UnavailableStatus = 0,
        UnloadedStatus = 1,
        LoadingStatus = 2,
        UnloadingStatus = 3,
        LoadedStatus = 4,
        EndOfStreamStatus = 5,
        StoppingStatus = 6,
        StartingStatus = 7,
        StartedStatus = 8
    };

    enum Error : int { NoError = 0, ResourceError = 1, FormatError = 2, HardwareError = 3 };

    explicit QFLDecoder(QObject *parent = nullptr);
    ~QFLDecoder() override;

    QMediaObject *mediaObject() const override;
    bool setMediaObject(QMediaObject *object) override;

    Status status() const;
    Error error() const;
    QString errorString() const;
    QVideoSurfaceFormat outputFormat();

    QStringList supportedCodecs(bool hardwareOnly) const;
    bool isFormatSupported(const QVideoEncoderSettings &settings) const;

    void setVideoSurface(QAbstractVideoSurface *surface);

    bool start(const QVideoEncoderSettings &settings);
    bool decode(const QFLEncodedVideoFrame &frame);
    void drain();
    void flush();
    void stop();

Q_SIGNALS:
    void statusChanged(QFLDecoder::Status status);
    void errorChanged(QFLDecoder::Error error);
    void outputFormatChanged(const QVideoSurfaceFormat &format);
    void endOfStream();

protected:
    explicit QFLDecoder(QFLDecoderPrivate &dd, QObject *parent = nullptr);

private:
    Q_DISABLE_COPY(QFLDecoder)
    Q_DECLARE_PRIVATE(QFLDecoder)
    Q_PRIVATE_SLOT(d_func(), void _q_error(QFLDecoder::Error, const QString &))
    Q_PRIVATE_SLOT(d_func(), void _q_outputFormatChanged(const QVideoSurfaceFormat &))
};

Q_DECLARE_METATYPE(QFLDecoder::Status)
Q_DECLARE_METATYPE(QFLDecoder::Error)

#endif
