// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Hands the camera's frames to an encoder's surface.

#ifndef RAWVIDEOSOURCECONTROL_H
#define RAWVIDEOSOURCECONTROL_H

#include "qflrawvideosourcecontrol.h"

class SurfaceGroup;

class RawVideoSourceControl : public QFLRawVideoSourceControl
{
    Q_OBJECT

public:
    explicit RawVideoSourceControl(SurfaceGroup *surfaces, QObject *parent = nullptr);
    ~RawVideoSourceControl() override;

    QAbstractVideoSurface *surface() const override;
    void setSurface(QAbstractVideoSurface *surface) override;

private:
    SurfaceGroup *m_surfaces;
};

#endif
