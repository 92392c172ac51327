// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The state of an encoder.

// This header is not part of the public interface: it may change from one version to the next.

#ifndef QFLENCODER_P_H
#define QFLENCODER_P_H

#include "qflencoder.h"
#include "qflrawvideosourcecontrol.h"
#include "qflsinkpointer.h"

#include <private/qmediaobject_p.h>

#include <QtCore/qloggingcategory.h>
#include <QtCore/qpointer.h>
#include <QtMultimedia/qvideorenderercontrol.h>

class QFLEncodeControl;
class QFLEncodedVideoSourceControl;
class QFLEncoderVideoSurface;
class QVideoEncoderSettingsControl;

Q_DECLARE_LOGGING_CATEGORY(lcFaceLinkEncoder)

class QFLEncoderPrivate : public QMediaObjectPrivate
{
    Q_DECLARE_PUBLIC(QFLEncoder)

public:
    void acquireControls();
    void releaseControls();

    bool rebind(QMediaObject *object);
    void unbind();
    void bindTo(QMediaObject *object);
    void attachSurface(QMediaService *boundService);
    void detachSurface();

    void _q_error(QFLEncoder::Error code, const QString &description);

    QFLEncodeControl *encodeControl = nullptr;
    QVideoEncoderSettingsControl *settingsControl = nullptr;
    QMediaObject *mediaObject = nullptr;
    QFLEncoderVideoSurface *surface = nullptr;
    QPointer<QFLRawVideoSourceControl> rawVideoSourceControl;
    QPointer<QVideoRendererControl> rendererControl;
    QFLEncodedVideoSourceControl *encodedVideoSourceControl = nullptr;
    QFLSinkPointer sink;
    QFLEncoder::Error error = QFLEncoder::NoError;
    QString errorString;
    QMetaObject::Connection mediaObjectDestroyed;
    int bindRequest = 0;
    bool isEnding = false;
};

#endif
