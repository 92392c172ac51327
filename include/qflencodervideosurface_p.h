// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The service and the control that an encoder video surface feeds.

// This header is not part of the public interface: it may change from one version to the next.

#ifndef QFLENCODERVIDEOSURFACE_P_H
#define QFLENCODERVIDEOSURFACE_P_H

#include <QtCore/qglobal.h>

QT_BEGIN_NAMESPACE
class QMediaService;
QT_END_NAMESPACE

class QFLEncodeControl;

class QFLEncoderVideoSurfacePrivate
{
public:
    QMediaService *service = nullptr;
    QFLEncodeControl *control = nullptr;
    int run = 0;
};

#endif
