// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Succeeds if the library's provider knows an encoder for the codec that the argument names.

#include <QFLMediaServiceProvider>
#include <QtFaceLink/private/qflcamera_p.h>
#include <private/qfldecoder_p.h>
#include <private/qflencoder_p.h>

#include <QCoreApplication>

static_assert(std::is_base_of<QMediaObjectPrivate, QFLEncoderPrivate>::value
                      && std::is_base_of<QMediaObjectPrivate, QFLDecoderPrivate>::value
                      && std::is_base_of<QMediaObjectPrivate, QFLCameraPrivate>::value,
              "The private classes are complete.");

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    auto *provider = qobject_cast<QFLMediaServiceProvider *>(
            QMediaServiceProvider::defaultServiceProvider());
    if (!provider)
        return 1;
    const QByteArray id = provider->devices("facelink.encoder").value(0);
    qInfo("The first encoder is %s", id.constData());
    return application.arguments().size() == 2 && provider->isEncoder(id) ? 0 : 1;
}
