// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Succeeds if the encoder knows the codec that the argument names.

#include <QFLEncoder>
#include <QtFaceLink/QFLCodecInfo>
#include <QtFaceLink/QtFaceLink>
#include <qflcamera.h>

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QString codec = application.arguments().value(1);
    const QStringList known = QFLEncoder().supportedCodecs(false);
    qInfo("%s is one of: %s", qPrintable(codec), qPrintable(known.join(QLatin1Char(' '))));
    return known.contains(codec) && !QFLCodecInfo::availableEncoders(codec).isEmpty()
                    && QFLCamera().state() == QCamera::UnloadedState
            ? 0
            : 1;
}
