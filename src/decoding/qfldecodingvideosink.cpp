// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The sink that feeds a decoder.

#include "qfldecodingvideosink.h"
#include "qfldecodingvideosink_p.h"

#include "qfldecoder_p.h"

#include <QtCore/qdebug.h>
#include <QtCore/qpointer.h>

static QFLSink::Error sinkError(QFLDecoder::Error error)
{
    switch (error) {
    case QFLDecoder::ResourceError:
        return QFLSink::ResourceError;
    case QFLDecoder::FormatError:
        return QFLSink::FormatError;
    case QFLDecoder::HardwareError:
        return QFLSink::HardwareError;
    case QFLDecoder::NoError:
        break;
    }
    return QFLSink::NoError;
}

QFLDecodingVideoSinkPrivate::QFLDecodingVideoSinkPrivate(QFLDecodingVideoSink *sink,
                                                         QFLDecoder *decoder)
    : q_ptr(sink), decoder(decoder)
{
}

void QFLDecodingVideoSinkPrivate::_q_error(QFLDecoder::Error error)
{
    q_ptr->setError(sinkError(error));
}

void QFLDecodingVideoSinkPrivate::_q_statusChanged(QFLDecoder::Status status)
{
    q_ptr->setActive(status >= QFLDecoder::StartingStatus);
}

/*!
    \class QFLDecodingVideoSink qfldecodingvideosink.h
    \brief The sink that feeds a decoder with the stream of the source it is linked to.

    A decoder makes one for itself when it is bound to a media object for the first time; an
    application may make one for any decoder and link it to any source. The sink lives in the
    decoder's thread and is deleted with the decoder, if not before; an application unlinks its own
    before that.

    Every call goes straight to the decoder. The sink is active from its start on and while the
    decoder is starting or started: each change of QFLDecoder::status() sets the activity, and
    EndOfStreamStatus ends it, too. The decoder's errors become the sink's, which the source is
    told: ResourceError, FormatError and HardwareError those of the same name, NoError
    QFLSink::NoError. Their texts stay with QFLDecoder::errorString().
*/

/*!
    Makes a sink for \a decoder, its parent, that is unlinked and inactive whatever the decoder's
    status. A sink without decoder refuses everything.
*/
QFLDecodingVideoSink::QFLDecodingVideoSink(QFLDecoder *decoder)
    : QObject(decoder), d(new QFLDecodingVideoSinkPrivate(this, decoder))
{
    if (!decoder)
        return;

    connect(decoder, &QFLDecoder::statusChanged, this,
            [this](QFLDecoder::Status status) { d->_q_statusChanged(status); });
    connect(decoder, &QFLDecoder::errorChanged, this,
            [this](QFLDecoder::Error error) { d->_q_error(error); });
}

/*!
    Tells the source, if there is one, that the sink has become inactive.
*/
QFLDecodingVideoSink::~QFLDecodingVideoSink()
{
    setActive(false);
}

/*!
    Returns whether the decoder can decode a stream with these \a settings; false without decoder.
*/
bool QFLDecodingVideoSink::isFormatSupported(const QVideoEncoderSettings &settings) const
{
    return d->decoder && d->decoder->isFormatSupported(settings);
}

/*!
    Starts the decoder with \a settings and makes the sink active. Returns false, and leaves the
    sink as it is, if the decoder doesn't start; QFLDecoder::errorChanged() reports why.
*/
bool QFLDecodingVideoSink::start(const QVideoEncoderSettings &settings)
{
    qCDebug(lcFaceLinkDecoder);

    // The decoder's status changes, and what the application does upon that may delete or stop it.
    const QPointer<QFLDecodingVideoSink> self(this);
    const int run = ++d->run;
    const bool isStarted = d->decoder && d->decoder->start(settings);
    return isStarted && self && run == d->run && QFLEncodedVideoSink::start(settings);
}

/*!
    Has the decoder decode \a frame and returns whether it takes it; false without decoder.
*/
bool QFLDecodingVideoSink::encodedVideoFrame(const QFLEncodedVideoFrame &frame)
{
    return d->decoder && d->decoder->decode(frame);
}

/*!
    Drains the decoder; the sink stays active until the decoder's status says otherwise. Without
    decoder the sink stops.
*/
void QFLDecodingVideoSink::drain()
{
    qCDebug(lcFaceLinkDecoder);

    if (d->decoder)
        d->decoder->drain();
    else
        QFLEncodedVideoSink::stop();
}

/*!
    Stops the decoder, then the sink.
*/
void QFLDecodingVideoSink::stop()
{
    qCDebug(lcFaceLinkDecoder);

    const QPointer<QFLDecodingVideoSink> self(this);
    const int run = ++d->run;
    if (d->decoder)
        d->decoder->stop();
    if (self && run == d->run)
        QFLEncodedVideoSink::stop();
}

#include "moc_qfldecodingvideosink.cpp"
