// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A call of the program with itself: the camera beside its encoded and decoded pictures.

#include <qflcamera.h>
#include <qfldecoder.h>
#include <qflencoder.h>

#include <QtCore/qdebug.h>
#include <QtMultimediaWidgets/qvideowidget.h>
#include <QtWidgets/qapplication.h>
#include <QtWidgets/qsplitter.h>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);

    QSplitter window;
    auto *localView = new QVideoWidget(&window);
    auto *remoteView = new QVideoWidget(&window);
    window.resize(960, 360);
    window.show();

    QVideoEncoderSettings settings;
    settings.setCodec(QStringLiteral("VP8"));
    settings.setBitRate(1000000);

    QFLEncoder encoder;
    encoder.setVideoSettings(settings);
    QFLDecoder decoder;
    decoder.setVideoSurface(remoteView->videoSurface());

    QFLCamera camera;
    camera.setViewfinder(localView->videoSurface());
    if (!encoder.bind(&decoder) || !camera.bind(&encoder)) {
        qCritical("There is no backend, or it can't code video.");
        return 1;
    }

    QObject::connect(&camera, QOverload<QCamera::Error>::of(&QFLCamera::error), &application,
                     [&] { qWarning() << camera.errorString(); });
    QObject::connect(&encoder, &QFLEncoder::errorChanged, &application,
                     [&] { qWarning() << encoder.errorString(); });
    QObject::connect(&decoder, &QFLDecoder::errorChanged, &application,
                     [&] { qWarning() << decoder.errorString(); });
    camera.start();

    return QApplication::exec();
}
