// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Passes raw frames between Qt and GStreamer without copying their pixels.

#include "videoframe.h"

#include "videoformat.h"

#include <QtCore/qcoreapplication.h>
#include <QtCore/qdebug.h>
#include <QtMultimedia/qabstractvideobuffer.h>

namespace {

class GstVideoBuffer;

// The handle by which a buffer of ours is told from others. A cast of the language crashes on buffers
// of applications that are built without run-time type information.
struct GstVideoBufferHandle
{
    const GstVideoBuffer *buffer;
};

} // namespace

Q_DECLARE_TYPEINFO(GstVideoBufferHandle, Q_PRIMITIVE_TYPE);
Q_DECLARE_METATYPE(GstVideoBufferHandle)

namespace {

class GstVideoBuffer : public QAbstractPlanarVideoBuffer
{
public:
    GstVideoBuffer(GstBuffer *buffer, const GstVideoInfo &info);
    ~GstVideoBuffer() override;

    GstBufferPointer reference() const;
    bool hasLayoutOf(const GstVideoInfo &info) const;

    QVariant handle() const override;
    MapMode mapMode() const override;
    int map(MapMode mode, int *numBytes, int bytesPerLine[4], uchar *data[4]) override;
    void unmap() override;

private:
    GstBufferPointer m_buffer;
    GstVideoInfo m_info;
    GstVideoFrame m_frame = {};
    MapMode m_mode = NotMapped;
};

GstVideoBuffer::GstVideoBuffer(GstBuffer *buffer, const GstVideoInfo &info)
    : QAbstractPlanarVideoBuffer(NoHandle), m_buffer(gst_buffer_ref(buffer)), m_info(info)
{
}

GstVideoBuffer::~GstVideoBuffer()
{
    GstVideoBuffer::unmap();
}

GstBufferPointer GstVideoBuffer::reference() const
{
    return GstBufferPointer(gst_buffer_ref(m_buffer.get()));
}

bool GstVideoBuffer::hasLayoutOf(const GstVideoInfo &info) const
{
    return GST_VIDEO_INFO_FORMAT(&m_info) == GST_VIDEO_INFO_FORMAT(&info)
            && (gst_buffer_get_video_meta(m_buffer.get())
                || gst_buffer_get_size(m_buffer.get()) >= GST_VIDEO_INFO_SIZE(&info));
}

QVariant GstVideoBuffer::handle() const
{
    return QVariant::fromValue(GstVideoBufferHandle {this});
}

QAbstractVideoBuffer::MapMode GstVideoBuffer::mapMode() const
{
    return m_mode;
}

/*! Writing is refused while anyone else, such as an encoder, holds the same GstBuffer. */
int GstVideoBuffer::map(MapMode mode, int *numBytes, int bytesPerLine[4], uchar *data[4])
{
    const bool isForWriting = mode & WriteOnly;
    if (m_mode != NotMapped || mode == NotMapped)
        return 0;
    if (isForWriting && !gst_buffer_is_writable(m_buffer.get()))
        return 0;

    const int flags = (mode & ReadOnly ? GST_MAP_READ : 0) | (isForWriting ? GST_MAP_WRITE : 0)
            | int(GST_VIDEO_FRAME_MAP_FLAG_NO_REF);
    if (!gst_video_frame_map(&m_frame, &m_info, m_buffer.get(), GstMapFlags(flags)))
        return 0;

    m_mode = mode;
    *numBytes = int(gst_buffer_get_size(m_buffer.get()));
    const int planeCount = int(GST_VIDEO_FRAME_N_PLANES(&m_frame));
    for (int plane = 0; plane < planeCount; ++plane) {
        bytesPerLine[plane] = GST_VIDEO_FRAME_PLANE_STRIDE(&m_frame, plane);
        data[plane] = static_cast<uchar *>(GST_VIDEO_FRAME_PLANE_DATA(&m_frame, plane));
    }
    return planeCount;
}

void GstVideoBuffer::unmap()
{
    if (m_mode == NotMapped)
        return;
    gst_video_frame_unmap(&m_frame);
    m_mode = NotMapped;
}

const GstVideoBuffer *ownBuffer(const QVideoFrame &frame)
{
    const QVariant handle = frame.handle();
    const bool isOwn = handle.userType() == qMetaTypeId<GstVideoBufferHandle>();
    return isOwn ? handle.value<GstVideoBufferHandle>().buffer : nullptr;
}

// Keeps a frame of the application mapped for as long as GStreamer uses its memory.
class MappedFrame
{
public:
    explicit MappedFrame(const QVideoFrame &frame) : m_frame(frame)
    {
        m_isMapped = m_frame.map(QAbstractVideoBuffer::ReadOnly);
    }
    ~MappedFrame()
    {
        if (m_isMapped)
            m_frame.unmap();
    }
    Q_DISABLE_COPY(MappedFrame)

    bool isMapped() const { return m_isMapped; }
    const QVideoFrame &frame() const { return m_frame; }

private:
    QVideoFrame m_frame;
    bool m_isMapped = false;
};

using MappedFramePointer = std::shared_ptr<MappedFrame>;

struct Plane
{
    int rowSize = 0;
    int height = 0;
};

QString text(const char *sourceText)
{
    return QCoreApplication::translate("VideoFrame", sourceText);
}

QString formatText(QVideoFrame::PixelFormat format, const QSize &size)
{
    QString formatName;
    QDebug(&formatName).nospace() << format;
    return QStringLiteral("%1x%2 %3").arg(size.width()).arg(size.height()).arg(formatName);
}

QString checkFormat(const QVideoFrame &frame, const GstVideoInfo &info)
{
    const QSize size(info.width, info.height);
    if (frame.size() == size
        && VideoFormat::toGst(frame.pixelFormat()) == GST_VIDEO_INFO_FORMAT(&info))
        return QString();
    return text("The frame is %1, but %2 was expected")
            .arg(formatText(frame.pixelFormat(), frame.size()),
                 formatText(VideoFormat::fromGst(GST_VIDEO_INFO_FORMAT(&info)), size));
}

Plane planeOf(const GstVideoInfo &info, int plane)
{
    gint components[GST_VIDEO_MAX_COMPONENTS];
    gst_video_format_info_component(info.finfo, guint(plane), components);
    const gint component = components[0];
    Plane result;
    result.height = GST_VIDEO_INFO_COMP_HEIGHT(&info, component);
    result.rowSize = GST_VIDEO_INFO_COMP_WIDTH(&info, component)
            * GST_VIDEO_INFO_COMP_PSTRIDE(&info, component);
    return result;
}

QString checkPlanes(const QVideoFrame &frame, const GstVideoInfo &info)
{
    const int planeCount = int(GST_VIDEO_INFO_N_PLANES(&info));
    if (frame.planeCount() != planeCount)
        return text("The frame has %1 planes instead of %2").arg(frame.planeCount()).arg(planeCount);

    qint64 needed = 0;
    for (int index = 0; index < planeCount; ++index) {
        const Plane plane = planeOf(info, index);
        const int stride = frame.bytesPerLine(index);
        if (!frame.bits(index) || stride < plane.rowSize) {
            return text("A row of the frame has %1 bytes instead of %2 or more")
                    .arg(stride)
                    .arg(plane.rowSize);
        }
        const bool isLast = index == planeCount - 1;
        needed += qint64(stride) * (plane.height - 1) + (isLast ? plane.rowSize : stride);
    }
    if (frame.mappedBytes() < needed)
        return text("The frame has %1 bytes instead of %2").arg(frame.mappedBytes()).arg(needed);
    return QString();
}

void dropReference(gpointer mappedFrame)
{
    delete static_cast<MappedFramePointer *>(mappedFrame);
}

// One memory per plane: planes of the application's own buffers may lie anywhere.
GstBufferPointer wrap(const MappedFramePointer &mapped, const GstVideoInfo &info)
{
    GstBufferPointer buffer(gst_buffer_new());
    const int planeCount = int(GST_VIDEO_INFO_N_PLANES(&info));
    gsize offsets[GST_VIDEO_MAX_PLANES] = {};
    gint strides[GST_VIDEO_MAX_PLANES] = {};
    gsize offset = 0;
    for (int index = 0; index < planeCount; ++index) {
        const Plane plane = planeOf(info, index);
        strides[index] = mapped->frame().bytesPerLine(index);
        offsets[index] = offset;
        const gsize size = gsize(strides[index]) * gsize(plane.height - 1) + gsize(plane.rowSize);
        auto *bits = const_cast<uchar *>(mapped->frame().bits(index));
        gst_buffer_append_memory(
                buffer.get(),
                gst_memory_new_wrapped(GST_MEMORY_FLAG_READONLY, bits, size, 0, size,
                                       new MappedFramePointer(mapped), dropReference));
        offset += size;
    }
    gst_buffer_add_video_meta_full(buffer.get(), GST_VIDEO_FRAME_FLAG_NONE,
                                   GST_VIDEO_INFO_FORMAT(&info), guint(info.width),
                                   guint(info.height), guint(planeCount), offsets, strides);
    return buffer;
}

} // namespace

/*!
    A frame that refers to \a buffer, laid out as \a info or the buffer's own video meta says, and
    maps it on demand. \a startTime is in microseconds. The frame is invalid when Qt doesn't have
    the pixel format.
*/
QVideoFrame VideoFrame::fromGst(GstBuffer *buffer, const GstVideoInfo &info, qint64 startTime)
{
    const QVideoFrame::PixelFormat pixelFormat = VideoFormat::fromGst(GST_VIDEO_INFO_FORMAT(&info));
    if (!buffer || pixelFormat == QVideoFrame::Format_Invalid)
        return QVideoFrame();

    QVideoFrame frame(new GstVideoBuffer(buffer, info), QSize(info.width, info.height),
                      pixelFormat);
    frame.setStartTime(startTime);
    return frame;
}

/*!
    A buffer that refers to the pixels of \a frame: the very GstBuffer of a frame that fromGst()
    made, else a wrapper that keeps the frame mapped until GStreamer has done with it, on a thread
    of GStreamer's. The buffer has no times.

    Null, with \a errorText naming the values, when the frame hasn't the size and pixel format of
    \a info, or fewer bytes than they take.
*/
GstBufferPointer VideoFrame::toGst(const QVideoFrame &frame, const GstVideoInfo &info,
                                   QString *errorText)
{
    *errorText = checkFormat(frame, info);
    if (!errorText->isEmpty())
        return nullptr;

    const GstVideoBuffer *own = ownBuffer(frame);
    if (own && own->hasLayoutOf(info))
        return own->reference();

    const auto mapped = std::make_shared<MappedFrame>(frame);
    *errorText = mapped->isMapped() ? checkPlanes(mapped->frame(), info)
                                    : text("The frame cannot be mapped for reading");
    if (!errorText->isEmpty())
        return nullptr;
    return wrap(mapped, info);
}
