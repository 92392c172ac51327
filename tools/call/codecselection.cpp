// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Finds the codec that the command line asks for.

#include "codecselection.h"

#include "callsettings.h"
#include "rtppayload.h"

#include <qflcodecinfo.h>

#include <cmath>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(CodecSelection)
};

bool matches(const QFLCodecInfo &encoder, const QString &wanted)
{
    return wanted.isEmpty() || encoder.codec().compare(wanted, Qt::CaseInsensitive) == 0
            || encoder.codecId() == wanted.toLatin1();
}

// Two megabits at 1280x720 and 30 frames a second. Smaller pictures take more bits a pixel, which
// the square root of the area follows well enough.
int defaultBitRate(const QSize &size)
{
    const qreal area = qreal(size.width()) * size.height() / (1280 * 720);
    return int(2000000 * std::sqrt(qBound(0.02, area, 16.0)));
}

} // namespace

/*!
    The first encoder of the codec asked for that the call can carry and decode again. On failure
    the result is null and \a error is set.
*/
QFLCodecInfo CodecSelection::find(const CallSettings &settings, CallError *error)
{
    const QList<QFLCodecInfo> encoders = QFLCodecInfo::availableEncoders();
    for (const QFLCodecInfo &encoder : encoders) {
        if (!matches(encoder, settings.codec) || RtpPayload::forCodec(encoder.codec()).isNull())
            continue;
        if (!QFLCodecInfo::availableDecoders(encoder.codec()).isEmpty())
            return encoder;
    }
    *error = {CallError::NoCodec,
              settings.codec.isEmpty()
                      ? Texts::tr("there is no codec for calls, or no codec backend")
                      : Texts::tr("there is no codec '%1' for calls").arg(settings.codec)};
    return QFLCodecInfo();
}

/*! The settings with which \a encoder encodes pictures of \a size. */
QVideoEncoderSettings CodecSelection::encoderSettings(const QFLCodecInfo &encoder,
                                                      const QSize &size,
                                                      const CallSettings &settings)
{
    QVideoEncoderSettings video;
    video.setCodec(QString::fromLatin1(encoder.codecId()));
    video.setEncodingMode(QMultimedia::ConstantBitRateEncoding);
    video.setBitRate(settings.bitRate > 0 ? settings.bitRate : defaultBitRate(size));
    video.setFrameRate(settings.frameRate);
    return video;
}
