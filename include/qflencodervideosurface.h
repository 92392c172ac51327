// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The surface through which a media object feeds its raw frames to an encoder.

#ifndef QFLENCODERVIDEOSURFACE_H
#define QFLENCODERVIDEOSURFACE_H

#include "qflglobal.h"

#include <QtCore/qscopedpointer.h>
#include <QtMultimedia/qabstractvideosurface.h>

class QFLEncoder;
class QFLEncoderVideoSurfacePrivate;

class Q_FACELINK_EXPORT QFLEncoderVideoSurface : public QAbstractVideoSurface
{
    Q_OBJECT

public:
    explicit QFLEncoderVideoSurface(QFLEncoder *encoder);
    ~QFLEncoderVideoSurface() override;

    QList<QVideoFrame::PixelFormat> supportedPixelFormats(
            QAbstractVideoBuffer::HandleType type = QAbstractVideoBuffer::NoHandle) const override;

    bool start(const QVideoSurfaceFormat &format) override;
    void stop() override;
    bool present(const QVideoFrame &frame) override;

private:
    Q_DISABLE_COPY(QFLEncoderVideoSurface)

    QScopedPointer<QFLEncoderVideoSurfacePrivate> d;
};

#endif
