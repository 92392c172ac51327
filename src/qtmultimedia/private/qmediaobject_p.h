// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Our declaration of the private data of a media object in Qt Multimedia 5.15, for Qt installations
// without its private headers.

#ifndef QMEDIAOBJECT_P_H
#define QMEDIAOBJECT_P_H

#include <QtMultimedia/qmediaobject.h>

#include <private/qobject_p.h>

#include <QtCore/qset.h>
#include <QtCore/qtimer.h>

QT_BEGIN_NAMESPACE

class QMediaAvailabilityControl;
class QMetaDataReaderControl;

// The order and the types of the members are those of the installed library, which reads and
// writes them.
class QMediaObjectPrivate : public QObjectPrivate
{
    Q_DECLARE_PUBLIC(QMediaObject)

public:
    QMediaService *service = nullptr;
    QMetaDataReaderControl *metaDataControl = nullptr;
    QMediaAvailabilityControl *availabilityControl = nullptr;
    QTimer *notifyTimer = nullptr;
    QSet<int> notifyProperties;
};

QT_END_NAMESPACE

#endif
