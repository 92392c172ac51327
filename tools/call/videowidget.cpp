// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Shows the last frame of a surface, as large as fits.

#include "videowidget.h"

#include "framesurface.h"

#include <QtGui/qpainter.h>

namespace {

QRect fittedRect(const QSize &frameSize, const QRect &area)
{
    QRect rect(QPoint(), frameSize.scaled(area.size(), Qt::KeepAspectRatio));
    rect.moveCenter(area.center());
    return rect;
}

void drawFrame(QPainter *painter, QVideoFrame frame, const QRect &area)
{
    if (!frame.map(QAbstractVideoBuffer::ReadOnly))
        return;
    const QImage image(frame.bits(), frame.width(), frame.height(), frame.bytesPerLine(),
                       QVideoFrame::imageFormatFromPixelFormat(frame.pixelFormat()));
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(fittedRect(frame.size(), area), image);
    frame.unmap();
}

} // namespace

/*! \a surface is borrowed and has to outlive the widget. */
VideoWidget::VideoWidget(FrameSurface *surface, QWidget *parent)
    : QWidget(parent), m_surface(surface)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(80, 45);
    connect(surface, &FrameSurface::framePresented, this, [this] { update(); });
}

/*! The text that stands in for the picture before the first frame. */
void VideoWidget::setPlaceholder(const QString &text)
{
    m_placeholder = text;
    update();
}

/*! A line around the picture, none by default. */
void VideoWidget::setBorder(const QColor &color)
{
    m_borderColor = color;
    update();
}

void VideoWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(24, 26, 30));
    const QVideoFrame frame = m_surface->frame();
    painter.setPen(QColor(150, 155, 165));
    if (frame.isValid())
        drawFrame(&painter, frame, rect());
    else
        painter.drawText(rect(), Qt::AlignCenter, m_placeholder);
    if (m_borderColor.isValid()) {
        painter.setPen(m_borderColor);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}
