// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A camera that plays a video file over and over.

#include "filecamerasource.h"

#include "capturesettings.h"
#include "gstreamersetup.h"

#include <QtCore/qdir.h>
#include <QtCore/qfile.h>

namespace {

const qreal usualFrameRate = 30;

QSize even(const QSize &size)
{
    return QSize(qMax(2, size.width() / 2 * 2), qMax(2, size.height() / 2 * 2));
}

QSize fitting(const QSize &size, int longEdge, int shortEdge)
{
    const bool isPortrait = size.height() > size.width();
    const QSize bounds = isPortrait ? QSize(shortEdge, longEdge) : QSize(longEdge, shortEdge);
    const bool fits = size.width() <= bounds.width() && size.height() <= bounds.height();
    return even(fits ? size : size.scaled(bounds, Qt::KeepAspectRatio));
}

// Runs on a streaming thread: 1 takes the stream, 0 leaves it undecoded.
gint selectStream(GstElement *, GstStreamCollection *collection, GstStream *stream, gpointer)
{
    if (!(gst_stream_get_stream_type(stream) & GST_STREAM_TYPE_VIDEO))
        return 0;
    for (guint index = 0; index < gst_stream_collection_get_size(collection); ++index) {
        GstStream *candidate = gst_stream_collection_get_stream(collection, index);
        if (gst_stream_get_stream_type(candidate) & GST_STREAM_TYPE_VIDEO)
            return candidate == stream;
    }
    return 0;
}

} // namespace

/*!
    \class FileCameraSource

    Plays the first video stream of a file over and over, without its sound, at the file's own pace.
*/

/*! \a path is that of the file. */
FileCameraSource::FileCameraSource(const QString &path) : m_path(path) { }

CameraFailure FileCameraSource::open()
{
    return m_probe.run(m_path);
}

QString FileCameraSource::displayName() const
{
    return QDir::toNativeSeparators(m_path);
}

/*! The file's own size and the usual smaller ones of its shape; none if the file names no size. */
QList<QCameraViewfinderSettings> FileCameraSource::supportedSettings() const
{
    const QSize native = uprightSize();
    if (native.isEmpty())
        return {};
    const qreal rate = m_probe.frameRate() > 0 ? m_probe.frameRate() : usualFrameRate;
    QList<QSize> sizes = {even(native)};
    for (int shortEdge : {1080, 720, 480, 360, 240}) {
        const QSize size = fitting(native, shortEdge * 4, shortEdge);
        if (!sizes.contains(size))
            sizes.append(size);
    }
    QList<QCameraViewfinderSettings> settings;
    for (const QSize &size : qAsConst(sizes)) {
        for (QVideoFrame::PixelFormat format :
             {QVideoFrame::Format_YUV420P, QVideoFrame::Format_NV12})
            settings.append(CaptureSettings::make(size, 1, rate, format));
    }
    return settings;
}

/*! The file's own size and rate, but no more than 1280x720 at 30 frames per second: a call. */
QCameraViewfinderSettings FileCameraSource::defaultSettings() const
{
    const QSize native = uprightSize();
    const qreal rate = m_probe.frameRate();
    const qreal callRate = rate > 0 ? qMin(rate, usualFrameRate) : usualFrameRate;
    return CaptureSettings::make(native.isEmpty() ? QSize() : fitting(native, 1280, 720), callRate,
                                 callRate, QVideoFrame::Format_Invalid);
}

GstElementPointer FileCameraSource::createPipeline(const QCameraViewfinderSettings &settings,
                                                   CameraFailure *failure) const
{
    GstElementPointer pipeline = parse(description(settings), failure);
    if (!pipeline)
        return nullptr;
    const GstElementPointer file(gst_bin_get_by_name(GST_BIN(pipeline.get()), "file"));
    const GstElementPointer decoder(gst_bin_get_by_name(GST_BIN(pipeline.get()), "decoder"));
    g_object_set(file.get(), "location", QFile::encodeName(m_path).constData(), nullptr);
    // Only now: the decoder looks at the file as soon as it is linked.
    gst_element_link(file.get(), decoder.get());
    g_signal_connect(decoder.get(), "select-stream", G_CALLBACK(selectStream), nullptr);
    return pipeline;
}

bool FileCameraSource::isRepeating() const
{
    return true;
}

QSize FileCameraSource::uprightSize() const
{
    return m_probe.isTurnedSideways() ? m_probe.size().transposed() : m_probe.size();
}

/*!
    Frames are dropped first, then made smaller and only then turned, so that each step has as
    little to do as possible. A step that changes nothing passes the frames through; the rate is
    always made even, because that of a phone's recordings isn't.
*/
QString FileCameraSource::description(const QCameraViewfinderSettings &settings) const
{
    const QSize upright = settings.resolution();
    const QSize size = m_probe.isTurnedSideways() ? upright.transposed() : upright;
    QString steps = QStringLiteral("filesrc name=file decodebin3 name=decoder ! ");
    steps += QStringLiteral("videorate ! video/x-raw,%1 ! ")
                     .arg(CaptureSettings::frameRateField(settings.maximumFrameRate()));
    steps += QStringLiteral("videoconvertscale ! %1 ! ")
                     .arg(CaptureSettings::rawCaps(size, settings.pixelFormat()));
    if (m_probe.rotation() != GST_VIDEO_ORIENTATION_IDENTITY)
        steps += QStringLiteral("videoflip video-direction=%1 ! ").arg(int(m_probe.rotation()));
    return steps
            + QStringLiteral("appsink name=frames sync=true qos=false enable-last-sample=false");
}
