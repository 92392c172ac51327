// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The controls of an exposure settings object.

// This header is not part of the public interface: it may change from one version to the next.

#ifndef QFLCAMERAEXPOSURE_P_H
#define QFLCAMERAEXPOSURE_P_H

#include "qflcameraexposure.h"

#include <QtCore/qvariant.h>
#include <QtMultimedia/qcameraexposurecontrol.h>

QT_BEGIN_NAMESPACE
class QCameraFlashControl;
QT_END_NAMESPACE

class QFLCameraExposurePrivate
{
public:
    using Parameter = QCameraExposureControl::ExposureParameter;

    QFLCameraExposurePrivate(QFLCameraExposure *exposure, QFLCamera *camera);

    void acquireControls();
    void releaseControls();
    void connectControls();

    QVariant actualValue(Parameter parameter) const;
    QVariant requestedValue(Parameter parameter) const;
    void setValue(Parameter parameter, const QVariant &value);
    QVariantList supportedRange(Parameter parameter, bool *continuous = nullptr) const;

    void _q_exposureParameterChanged(int parameter);
    void _q_exposureParameterRangeChanged(int parameter);

    QFLCameraExposure *q_ptr;
    QFLCamera *camera;
    QCameraExposureControl *exposureControl = nullptr;
    QCameraFlashControl *flashControl = nullptr;
};

#endif
