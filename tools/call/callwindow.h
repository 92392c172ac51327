// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The window of a call: the remote picture, the local one in its corner, and a line of figures.

#ifndef CALLWINDOW_H
#define CALLWINDOW_H

#include <QtWidgets/qwidget.h>

class Call;
class QLabel;
class VideoWidget;

class CallWindow : public QWidget
{
    Q_OBJECT

public:
    explicit CallWindow(Call *call, QWidget *parent = nullptr);

    void showStatus(const QString &text);

Q_SIGNALS:
    void closed();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    VideoWidget *m_remoteVideo;
    VideoWidget *m_localVideo;
    QLabel *m_status;
};

#endif
