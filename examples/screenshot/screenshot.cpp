// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Takes a screenshot once every view of the program shows a picture.

#include "screenshot.h"

#include <QtCore/qset.h>
#include <QtGui/qpixmap.h>
#include <QtWidgets/qapplication.h>
#include <QtWidgets/qwidget.h>

namespace {

const int lookIntervalMilliseconds = 100;

// By then a window that shows figures has some to show.
const int settlingMilliseconds = 2500;

// A view without a picture is grey, with or without a text.
const int fewestColours = 6;
const QRgb leadingBits = 0xc0c0c0;

bool isView(const QWidget *widget)
{
    return widget->isVisible()
            && (widget->inherits("QVideoWidget") || widget->inherits("VideoWidget"));
}

bool showsPicture(QWidget *view)
{
    const QImage image = view->grab().toImage().scaled(64, 64);
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y) & leadingBits);
    }
    return colours.count() >= fewestColours;
}

} // namespace

/*! Saves to \a fileName, and then ends the program with the exit code 0, or 1 if it can't. */
Screenshot::Screenshot(const QString &fileName) : m_fileName(fileName)
{
    connect(&m_timer, &QTimer::timeout, this, &Screenshot::lookAtWindows);
    m_timer.start(lookIntervalMilliseconds);
}

void Screenshot::lookAtWindows()
{
    bool hasView = false;
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets) {
        if (!isView(widget))
            continue;
        if (!showsPicture(widget))
            return;
        hasView = true;
    }
    if (!hasView)
        return;
    m_timer.stop();
    QTimer::singleShot(settlingMilliseconds, this, &Screenshot::save);
}

void Screenshot::save()
{
    QWidget *const window = QApplication::topLevelWidgets().constFirst();
    const bool isSaved = window->grab().save(m_fileName, "PNG");
    QCoreApplication::exit(isSaved ? 0 : 1);
}
