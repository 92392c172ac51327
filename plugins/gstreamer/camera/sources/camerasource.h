// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Where the frames of a camera come from.

#ifndef CAMERASOURCE_H
#define CAMERASOURCE_H

#include "camerafailure.h"
#include "driversettings.h"
#include "gstpointers.h"

#include <QtCore/qlist.h>
#include <QtMultimedia/qcameraviewfindersettings.h>

#include <memory>

class CameraSource
{
public:
    static std::unique_ptr<CameraSource> create(const QByteArray &deviceName);
    virtual ~CameraSource();

    virtual CameraFailure open() = 0;
    virtual QString displayName() const = 0;
    virtual QList<QCameraViewfinderSettings> supportedSettings() const = 0;
    virtual QCameraViewfinderSettings defaultSettings() const = 0;

    virtual std::unique_ptr<DriverSettings> createDriverSettings() const;
    virtual GstElementPointer createPipeline(const QCameraViewfinderSettings &settings,
                                             CameraFailure *failure) const = 0;
    virtual bool isRepeating() const;
    virtual QString explain(const QString &report) const;

protected:
    CameraSource();

    static GstElementPointer parse(const QString &description, CameraFailure *failure);

private:
    Q_DISABLE_COPY(CameraSource)
};

#endif
