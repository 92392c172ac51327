// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Sets how the camera exposes its pictures.

#ifndef EXPOSURECONTROL_H
#define EXPOSURECONTROL_H

#include "devicemenu.h"
#include "devicenumber.h"

#include <QtCore/qvariant.h>
#include <QtMultimedia/qcameraexposurecontrol.h>

class ExposureControl : public QCameraExposureControl
{
    Q_OBJECT

public:
    explicit ExposureControl(OpenDevice *device, QObject *parent = nullptr);

    bool isParameterSupported(ExposureParameter parameter) const override;
    QVariantList supportedParameterRange(ExposureParameter parameter,
                                         bool *continuous) const override;

    QVariant requestedValue(ExposureParameter parameter) const override;
    QVariant actualValue(ExposureParameter parameter) const override;
    bool setValue(ExposureParameter parameter, const QVariant &value) override;

private:
    struct Known
    {
        QVariantList range;
        QVariant value;
    };

    bool apply(ExposureParameter parameter, const QVariant &value);
    bool setNumber(const DeviceNumber &number, const DeviceMenu &mode, const QVariant &value);
    bool setExposureMode(int mode);

    QList<int> exposureModes() const;
    std::optional<int> exposureMode() const;

    void handleDevice();
    void setRequestedValue(ExposureParameter parameter, const QVariant &value);
    void announceChanges();

    DeviceNumber m_sensitivity;
    DeviceMenu m_sensitivityMode;
    DeviceNumber m_shutterSpeed;
    DeviceMenu m_shutterMode;
    DeviceNumber m_compensation;
    DeviceMenu m_exposureMode;
    DeviceMenu m_sceneMode;
    DeviceMenu m_meteringMode;

    QMap<ExposureParameter, QVariant> m_requested;
    QMap<ExposureParameter, Known> m_known;
};

#endif
