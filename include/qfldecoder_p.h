// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The state of a decoder.

// This header is not part of the public interface: it may change from one version to the next.

#ifndef QFLDECODER_P_H
#define QFLDECODER_P_H

#include "qfldecoder.h"

#include <private/qmediaobject_p.h>

#include <QtCore/qloggingcategory.h>

class QFLDecodeControl;
class QFLDecodingVideoSink;
class QFLEncodedVideoSourceControl;
class QVideoSurfaceOutput;

Q_DECLARE_LOGGING_CATEGORY(lcFaceLinkDecoder)

// Exported for the decoders that other libraries derive.
class Q_FACELINK_EXPORT QFLDecoderPrivate : public QMediaObjectPrivate
{
    Q_DECLARE_PUBLIC(QFLDecoder)

public:
    QFLDecoderPrivate();
    ~QFLDecoderPrivate() override;

    void acquireControl();

    bool rebind(QMediaObject *object);
    void unbind();
    bool linkTo(QMediaObject *object, QFLEncodedVideoSourceControl *control);
    void watch(QMediaObject *object, QFLEncodedVideoSourceControl *control);
    void forgetMediaObject();
    void forgetSource(QFLEncodedVideoSourceControl *control);

    void _q_error(QFLDecoder::Error code, const QString &description);
    void _q_outputFormatChanged(const QVideoSurfaceFormat &format);

    QMediaObject *boundMediaObject = nullptr;
    QVideoSurfaceFormat outputFormat;
    QScopedPointer<QVideoSurfaceOutput> videoOutput;
    QObject *boundVideoOutput = nullptr;
    QFLDecodeControl *decodeControl = nullptr;
    QFLEncodedVideoSourceControl *sourceControl = nullptr;
    QFLDecodingVideoSink *decodingSink = nullptr;
    QFLDecoder::Error error = QFLDecoder::NoError;
    QString errorString;
    QMetaObject::Connection mediaObjectDestroyed;
    QMetaObject::Connection sourceDestroyed;
    int bindRequest = 0;
    bool isEnding = false;
};

#endif
