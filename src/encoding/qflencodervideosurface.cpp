// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The surface through which a media object feeds its raw frames to an encoder.

#include "qflencodervideosurface.h"
#include "qflencodervideosurface_p.h"

#include "qflencodecontrol.h"
#include "qflencoder_p.h"

#include <QtCore/qdebug.h>
#include <QtMultimedia/qmediaservice.h>
#include <QtMultimedia/qvideosurfaceformat.h>

/*!
    \class QFLEncoderVideoSurface
    \brief The surface through which a media object feeds its raw frames to an encoder.

    The encoder makes one as its child when it is bound for the first time. A backend starts, feeds
    and stops it like a display surface, on whatever thread it renders from; each call goes straight
    to the encoder's encode control on that thread, without conversion, queue or lock.
*/

/*!
    Makes a surface for \a encoder, its parent, with the service that the encoder has now.
*/
QFLEncoderVideoSurface::QFLEncoderVideoSurface(QFLEncoder *encoder)
    : QAbstractVideoSurface(encoder), d(new QFLEncoderVideoSurfacePrivate)
{
    if (!encoder)
        return;

    // This reference is never released: the encoder's service is gone before its children are.
    d->service = encoder->service();
    if (d->service) {
        d->control = qobject_cast<QFLEncodeControl *>(
                d->service->requestControl(QFLEncodeControl_iid));
    }
}

QFLEncoderVideoSurface::~QFLEncoderVideoSurface() = default;

/*!
    Returns the encoder's pixel formats, whatever the \a type of the handle; none without an encode
    control.
*/
QList<QVideoFrame::PixelFormat> QFLEncoderVideoSurface::supportedPixelFormats(
        QAbstractVideoBuffer::HandleType) const
{
    return d->control ? d->control->supportedPixelFormats() : QList<QVideoFrame::PixelFormat>();
}

/*!
    Starts the encoder with \a format. Returns false, and stays inactive, if it doesn't start; the
    encoder's QFLEncoder::errorChanged() reports why.
*/
bool QFLEncoderVideoSurface::start(const QVideoSurfaceFormat &format)
{
    qCDebug(lcFaceLinkEncoder) << format;

    if (!d->control || !d->control->start(format))
        return false;

    QAbstractVideoSurface::start(format);
    return true;
}

/*!
    Stops the encoder, then the surface.
*/
void QFLEncoderVideoSurface::stop()
{
    qCDebug(lcFaceLinkEncoder);

    if (d->control)
        d->control->stop();
    QAbstractVideoSurface::stop();
}

/*!
    Passes \a frame to the encoder. Returns false if it is not taken, or without an encode control.
*/
bool QFLEncoderVideoSurface::present(const QVideoFrame &frame)
{
    return d->control && d->control->encode(frame);
}
