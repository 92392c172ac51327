// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Takes a screenshot once every view of the program shows a picture.

#ifndef SCREENSHOT_H
#define SCREENSHOT_H

#include <QtCore/qstring.h>
#include <QtCore/qtimer.h>

class Screenshot : public QObject
{
    Q_OBJECT

public:
    explicit Screenshot(const QString &fileName);

private:
    void lookAtWindows();
    void save();

    QString m_fileName;
    QTimer m_timer;
};

#endif
