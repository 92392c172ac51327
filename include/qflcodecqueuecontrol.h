// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The control by which a service asks for more input.

#ifndef QFLCODECQUEUECONTROL_H
#define QFLCODECQUEUECONTROL_H

#include "qflglobal.h"

#include <QtMultimedia/qmediacontrol.h>

class Q_FACELINK_EXPORT QFLCodecQueueControl : public QMediaControl
{
    Q_OBJECT

public:
    ~QFLCodecQueueControl() override;

    virtual int capacity() const = 0;
    virtual int pending() const = 0;
    virtual int lowWatermark() const = 0;
    virtual void setLowWatermark(int count) = 0;

Q_SIGNALS:
    void needData(int bufferCountHint);

protected:
    explicit QFLCodecQueueControl(QObject *parent = nullptr);
};

#define QFLCodecQueueControl_iid "facelink.codecqueuecontrol/1.0"
Q_MEDIA_DECLARE_CONTROL(QFLCodecQueueControl, QFLCodecQueueControl_iid)

#endif
