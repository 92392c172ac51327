// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Shows the last frame of a surface, as large as fits.

#ifndef VIDEOWIDGET_H
#define VIDEOWIDGET_H

#include <QtGui/qcolor.h>
#include <QtWidgets/qwidget.h>

class FrameSurface;

class VideoWidget : public QWidget
{
    Q_OBJECT

public:
    explicit VideoWidget(FrameSurface *surface, QWidget *parent = nullptr);

    void setPlaceholder(const QString &text);
    void setBorder(const QColor &color);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    FrameSurface *m_surface;
    QString m_placeholder;
    QColor m_borderColor;
};

#endif
