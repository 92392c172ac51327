// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The focus control of a camera whose backend has none.

#include "qcamerafocusfakefocuscontrol_p.h"

#include <QtCore/qdebug.h>

/*!
    \class QCameraFocusFakeFocusControl
    \brief The focus control of a camera whose backend has none.

    Answers with fixed neutral values, supports no mode, not even the one that it reports, and warns
    at each request of a change. It never emits a signal.
*/

QCameraFocusFakeFocusControl::QCameraFocusFakeFocusControl(QObject *parent)
    : QCameraFocusControl(parent)
{
}

QCameraFocus::FocusModes QCameraFocusFakeFocusControl::focusMode() const
{
    return QCameraFocus::AutoFocus;
}

void QCameraFocusFakeFocusControl::setFocusMode(QCameraFocus::FocusModes)
{
    qWarning("Focus mode selection is not supported");
}

bool QCameraFocusFakeFocusControl::isFocusModeSupported(QCameraFocus::FocusModes) const
{
    return false;
}

QCameraFocus::FocusPointMode QCameraFocusFakeFocusControl::focusPointMode() const
{
    return QCameraFocus::FocusPointAuto;
}

void QCameraFocusFakeFocusControl::setFocusPointMode(QCameraFocus::FocusPointMode)
{
    qWarning("Focus points mode selection is not supported");
}

bool QCameraFocusFakeFocusControl::isFocusPointModeSupported(QCameraFocus::FocusPointMode) const
{
    return false;
}

QPointF QCameraFocusFakeFocusControl::customFocusPoint() const
{
    return QPointF(0.5, 0.5);
}

void QCameraFocusFakeFocusControl::setCustomFocusPoint(const QPointF &)
{
    qWarning("Focus points selection is not supported");
}

QCameraFocusZoneList QCameraFocusFakeFocusControl::focusZones() const
{
    return QCameraFocusZoneList();
}
