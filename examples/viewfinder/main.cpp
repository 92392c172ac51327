// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The camera in a window.

#include <qflcamera.h>

#include <QtCore/qdebug.h>
#include <QtMultimediaWidgets/qvideowidget.h>
#include <QtWidgets/qapplication.h>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);

    QVideoWidget window;
    window.resize(640, 480);
    window.show();

    QFLCamera camera;
    QObject::connect(&camera, QOverload<QCamera::Error>::of(&QFLCamera::error), &application,
                     [&] { qWarning() << camera.errorString(); });
    camera.setViewfinder(window.videoSurface());
    camera.start();

    return QApplication::exec();
}
