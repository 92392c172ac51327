// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The surface on which a picture of the call is presented.

#ifndef FRAMESURFACE_H
#define FRAMESURFACE_H

#include <QtGui/qimage.h>
#include <QtMultimedia/qabstractvideosurface.h>
#include <QtMultimedia/qvideoframe.h>

class FrameSurface : public QAbstractVideoSurface
{
    Q_OBJECT

public:
    enum Purpose { ShowFrames, CountFrames };

    explicit FrameSurface(Purpose purpose, QObject *parent = nullptr);
    ~FrameSurface() override;

    quint64 framesArrived() const;
    quint64 framesPresented() const;

    QVideoFrame frame() const;
    QImage image() const;

    QList<QVideoFrame::PixelFormat> supportedPixelFormats(
            QAbstractVideoBuffer::HandleType type) const override;
    bool present(const QVideoFrame &frame) override;

Q_SIGNALS:
    void framePresented(qint64 startTime);

private:
    Purpose m_purpose;
    QVideoFrame m_frame;
    quint64 m_framesArrived = 0;
    quint64 m_framesPresented = 0;
};

#endif
