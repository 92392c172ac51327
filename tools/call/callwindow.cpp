// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The window of a call: the remote picture, the local one in its corner, and a line of figures.

#include "callwindow.h"

#include "call.h"
#include "videowidget.h"

#include <QtGui/qevent.h>
#include <QtWidgets/qboxlayout.h>
#include <QtWidgets/qlabel.h>

namespace {

const int margin = 16;
const QSize initialSize(960, 566);

} // namespace

/*!
    \fn void CallWindow::closed()

    Emitted when the user closes the window, which is how a call is hung up.
*/

/*! \a call is borrowed and has to outlive the window. */
CallWindow::CallWindow(Call *call, QWidget *parent)
    : QWidget(parent),
      m_remoteVideo(new VideoWidget(call->remoteSurface(), this)),
      m_localVideo(new VideoWidget(call->localSurface(), m_remoteVideo)),
      m_status(new QLabel(this))
{
    setWindowTitle(tr("Qt FaceLink call"));
    setPalette(QPalette(QColor(40, 43, 48)));
    resize(initialSize);
    m_remoteVideo->setPlaceholder(tr("Waiting for the other end"));
    m_localVideo->setPlaceholder(tr("Camera"));
    m_localVideo->setBorder(QColor(235, 235, 235));
    m_status->setContentsMargins(8, 4, 8, 4);
    m_status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    m_status->setText(tr("Calling"));

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_remoteVideo, 1);
    layout->addWidget(m_status);
}

void CallWindow::showStatus(const QString &text)
{
    m_status->setText(text);
}

void CallWindow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    layout()->activate();
    const QSize size = QSize(16, 9).scaled(m_remoteVideo->size() / 4, Qt::KeepAspectRatio);
    QRect corner(QPoint(), size);
    corner.moveBottomRight(m_remoteVideo->rect().bottomRight() - QPoint(margin, margin));
    m_localVideo->setGeometry(corner);
}

void CallWindow::closeEvent(QCloseEvent *event)
{
    QWidget::closeEvent(event);
    Q_EMIT closed();
}
