// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The surface through which a media object feeds its raw frames to an encoder.

#include "qflencodervideosurface.h"
#include "qflencodervideosurface_p.h"

#include "qflencodecontrol.h"
#include "qflencoder_p.h"
#include "qflserviceaccess_p.h"

#include <QtCore/qdebug.h>
#include <QtCore/qpointer.h>
#include <QtMultimedia/qvideosurfaceformat.h>

/*!
    \class QFLEncoderVideoSurface qflencodervideosurface.h
    \brief The surface through which a media object feeds its raw frames to an encoder.

    The encoder makes one as its child when it is bound for the first time, and keeps it until it is
    destroyed. A backend starts, feeds and stops it like a display surface, on whatever thread it
    renders from; each call goes straight to the encoder's encode control on that thread, without
    conversion, queue or lock. Errors are reported by QFLEncoder::errorChanged(), not by
    QAbstractVideoSurface::error().
*/

/*!
    Makes a surface for \a encoder, its parent, with the service that the encoder has now. Without
    encoder, service or encode control it has no pixel formats and refuses everything.
*/
QFLEncoderVideoSurface::QFLEncoderVideoSurface(QFLEncoder *encoder)
    : QAbstractVideoSurface(encoder), d(new QFLEncoderVideoSurfacePrivate)
{
    if (!encoder)
        return;

    // This reference is never released: the encoder's service is gone before its children are.
    d->service = encoder->service();
    d->control = QFLServiceAccess::requestControl<QFLEncodeControl>(d->service);
}

/*!
    Leaves the encode control as it is: the encoder gives that back, with its service.
*/
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
    encoder's QFLEncoder::errorChanged() reports why. Called by the bound object's backend before
    the first frame.
*/
bool QFLEncoderVideoSurface::start(const QVideoSurfaceFormat &format)
{
    qCDebug(lcFaceLinkEncoder) << format;

    // The encoder's status changes, and what the application does upon that may delete or stop it.
    const QPointer<QFLEncoderVideoSurface> self(this);
    const int run = ++d->run;
    const bool isStarted = d->control && d->control->start(format);
    if (!isStarted || !self || run != d->run)
        return false;

    QAbstractVideoSurface::start(format);
    return true;
}

/*!
    Stops the encoder, then the surface. Called by the bound object's backend after the last frame
    and when the surface is taken off; stops the encoder even if the surface was not started.
*/
void QFLEncoderVideoSurface::stop()
{
    qCDebug(lcFaceLinkEncoder);

    const QPointer<QFLEncoderVideoSurface> self(this);
    const int run = ++d->run;
    if (d->control)
        d->control->stop();
    if (self && run == d->run)
        QAbstractVideoSurface::stop();
}

/*!
    Passes \a frame to the encoder, whether the surface is active or not. Returns false if it is not
    taken, or without an encode control. Called by the bound object's backend once a frame.
*/
bool QFLEncoderVideoSurface::present(const QVideoFrame &frame)
{
    return d->control && d->control->encode(frame);
}
