// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The request and the release of the services of encoders and decoders.

// This header is not part of the public interface: it may change from one version to the next.

#ifndef QFLDEFAULTSERVICE_P_H
#define QFLDEFAULTSERVICE_P_H

#include <QtCore/qbytearray.h>

QT_BEGIN_NAMESPACE
class QMediaService;
QT_END_NAMESPACE

namespace QFLDefaultService {

QMediaService *request(const QByteArray &type);
void release(QMediaService *service);

} // namespace QFLDefaultService

#endif
