// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The zoom control of a camera whose backend has none.

#include "qcamerafocusfakezoomcontrol_p.h"

#include <QtCore/qdebug.h>

/*!
    \class QCameraFocusFakeZoomControl
    \brief The zoom control of a camera whose backend has none.

    All its factors are 1, and it warns at each request of a change. It never emits a signal.
*/

QCameraFocusFakeZoomControl::QCameraFocusFakeZoomControl(QObject *parent)
    : QCameraZoomControl(parent)
{
}

qreal QCameraFocusFakeZoomControl::maximumOpticalZoom() const
{
    return 1.0;
}

qreal QCameraFocusFakeZoomControl::maximumDigitalZoom() const
{
    return 1.0;
}

qreal QCameraFocusFakeZoomControl::requestedOpticalZoom() const
{
    return 1.0;
}

qreal QCameraFocusFakeZoomControl::requestedDigitalZoom() const
{
    return 1.0;
}

qreal QCameraFocusFakeZoomControl::currentOpticalZoom() const
{
    return 1.0;
}

qreal QCameraFocusFakeZoomControl::currentDigitalZoom() const
{
    return 1.0;
}

void QCameraFocusFakeZoomControl::zoomTo(qreal, qreal)
{
    qWarning("The camera doesn't support zooming.");
}
