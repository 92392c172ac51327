// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// One zone that a camera focuses on.

#include "qcamerafocuszone.h"

/*!
    \class QCameraFocusZone qcamerafocuszone.h
    \brief One zone that a camera focuses on.

    An implicitly shared value: copies share one record until setStatus() changes one of them. They
    may be copied and destroyed on any thread.

    Qt Multimedia defines this class as well, with the same layout and behaviour, so it does not
    matter which of the two definitions a process uses.
*/

/*!
    \enum QCameraFocusZone::FocusZoneStatus

    What the camera does with a zone.

    \value Invalid There is no zone.
    \value Unused The camera could focus on the zone, and doesn't.
    \value Selected The camera focuses on the zone, and isn't there yet.
    \value Focused The zone is in focus.
*/

class QCameraFocusZoneData : public QSharedData
{
public:
    QRectF area;
    QCameraFocusZone::FocusZoneStatus status = QCameraFocusZone::Invalid;
};

/*!
    Makes an invalid zone without area.
*/
QCameraFocusZone::QCameraFocusZone() : d(new QCameraFocusZoneData) { }

/*!
    Makes a zone with \a status that covers \a area, in coordinates relative to the frame: (0, 0) is
    its top left corner and (1, 1) its bottom right one.
*/
QCameraFocusZone::QCameraFocusZone(const QRectF &area, FocusZoneStatus status) : QCameraFocusZone()
{
    d->area = area;
    d->status = status;
}

/*!
    Makes a zone that shares the record of \a other.
*/
QCameraFocusZone::QCameraFocusZone(const QCameraFocusZone &other) = default;

/*!
    Shares the record of \a other, and gives up the one that was shared before.
*/
QCameraFocusZone &QCameraFocusZone::operator=(const QCameraFocusZone &other) = default;

/*!
    Gives up the record, which goes with its last zone.
*/
QCameraFocusZone::~QCameraFocusZone() = default;

/*!
    Returns whether this zone and \a other have the same area, by the fuzzy comparison of QRectF,
    and the same status.
*/
bool QCameraFocusZone::operator==(const QCameraFocusZone &other) const
{
    return d == other.d || (d->area == other.d->area && d->status == other.d->status);
}

/*!
    Returns whether this zone and \a other differ in area or status.
*/
bool QCameraFocusZone::operator!=(const QCameraFocusZone &other) const
{
    return !(*this == other);
}

/*!
    Returns whether the zone has a status but no area of positive width and height. A zone that is
    in use has both, and so is not valid by this definition, which is Qt's: look at status() and
    area() instead.
*/
bool QCameraFocusZone::isValid() const
{
    return d->status != Invalid && !d->area.isValid();
}

/*!
    Returns the area in coordinates relative to the frame.
*/
QRectF QCameraFocusZone::area() const
{
    return d->area;
}

/*!
    Returns what the camera does with the zone, Invalid unless it was set.
*/
QCameraFocusZone::FocusZoneStatus QCameraFocusZone::status() const
{
    return d->status;
}

/*!
    Sets \a status for this zone only, not for its copies.
*/
void QCameraFocusZone::setStatus(FocusZoneStatus status)
{
    d->status = status;
}
