// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A surface that counts the pictures that it gets.

#ifndef PICTURECOUNTER_H
#define PICTURECOUNTER_H

#include <QtMultimedia/qabstractvideosurface.h>

//! [class]
class PictureCounter : public QAbstractVideoSurface
{
    Q_OBJECT

public:
    QList<QVideoFrame::PixelFormat> supportedPixelFormats(
            QAbstractVideoBuffer::HandleType type) const override;
    bool present(const QVideoFrame &picture) override;

Q_SIGNALS:
    void counted(int count);

private:
    int m_count = 0;
};
//! [class]

#endif
