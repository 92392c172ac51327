// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A program that loads the library late and has a camera to its very end. It fails by its exit status.

#include <QtCore/qcoreapplication.h>
#include <QtCore/qlibrary.h>
#include <QtMultimedia/qcamera.h>

#include <cstdlib>
#include <memory>

// Made before, and so destroyed after, all that the library has with static life time.
static std::unique_ptr<QMediaObject> camera;

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    // Qt's own provider is made first.
    const QCamera early;

    QLibrary library(arguments.value(1));
    const auto makeCamera
            = reinterpret_cast<QMediaObject *(*)()>(library.resolve("makeFaceLinkCamera"));
    if (!makeCamera)
        return EXIT_FAILURE;
    camera.reset(arguments.value(2) == QLatin1String("QCamera") ? new QCamera : makeCamera());
    return camera->service() ? EXIT_SUCCESS : EXIT_FAILURE;
}
