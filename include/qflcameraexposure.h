// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The exposure settings object of a camera.

#ifndef QFLCAMERAEXPOSURE_H
#define QFLCAMERAEXPOSURE_H

#include "qflglobal.h"

#include <QtCore/qlist.h>
#include <QtCore/qobject.h>
#include <QtCore/qpoint.h>
#include <QtCore/qscopedpointer.h>
#include <QtMultimedia/qcameraexposure.h>

class QFLCamera;
class QFLCameraExposurePrivate;

class Q_FACELINK_EXPORT QFLCameraExposure : public QObject
{
    Q_OBJECT
    Q_PROPERTY(qreal aperture READ aperture NOTIFY apertureChanged)
    Q_PROPERTY(qreal shutterSpeed READ shutterSpeed NOTIFY shutterSpeedChanged)
    Q_PROPERTY(int isoSensitivity READ isoSensitivity NOTIFY isoSensitivityChanged)
    Q_PROPERTY(qreal exposureCompensation READ exposureCompensation WRITE setExposureCompensation
                       NOTIFY exposureCompensationChanged)
    Q_PROPERTY(bool flashReady READ isFlashReady NOTIFY flashReady)
    Q_PROPERTY(QCameraExposure::FlashModes flashMode READ flashMode WRITE setFlashMode)
    Q_PROPERTY(QCameraExposure::ExposureMode exposureMode READ exposureMode WRITE setExposureMode)
    Q_PROPERTY(QCameraExposure::MeteringMode meteringMode READ meteringMode WRITE setMeteringMode)

public:
    ~QFLCameraExposure() override;

    bool isAvailable() const;

    QCameraExposure::FlashModes flashMode() const;
    bool isFlashModeSupported(QCameraExposure::FlashModes mode) const;
    bool isFlashReady() const;

    QCameraExposure::ExposureMode exposureMode() const;
    bool isExposureModeSupported(QCameraExposure::ExposureMode mode) const;

    qreal exposureCompensation() const;

    QCameraExposure::MeteringMode meteringMode() const;
    bool isMeteringModeSupported(QCameraExposure::MeteringMode mode) const;

    QPointF spotMeteringPoint() const;
    void setSpotMeteringPoint(const QPointF &point);

    int isoSensitivity() const;
    int requestedIsoSensitivity() const;
    QList<int> supportedIsoSensitivities(bool *continuous = nullptr) const;

    qreal aperture() const;
    qreal requestedAperture() const;
    QList<qreal> supportedApertures(bool *continuous = nullptr) const;

    qreal shutterSpeed() const;
    qreal requestedShutterSpeed() const;
    QList<qreal> supportedShutterSpeeds(bool *continuous = nullptr) const;

public Q_SLOTS:
    void setFlashMode(QCameraExposure::FlashModes mode);
    void setExposureMode(QCameraExposure::ExposureMode mode);
    void setMeteringMode(QCameraExposure::MeteringMode mode);

    void setExposureCompensation(qreal ev);

    void setManualIsoSensitivity(int iso);
    void setAutoIsoSensitivity();

    void setManualAperture(qreal aperture);
    void setAutoAperture();

    void setManualShutterSpeed(qreal seconds);
    void setAutoShutterSpeed();

Q_SIGNALS:
    void flashReady(bool ready);

    void apertureChanged(qreal aperture);
    void apertureRangeChanged();

    void shutterSpeedChanged(qreal seconds);
    void shutterSpeedRangeChanged();

    void isoSensitivityChanged(int iso);
    void exposureCompensationChanged(qreal ev);

private:
    Q_DISABLE_COPY(QFLCameraExposure)
    friend class QFLCameraPrivate;

    explicit QFLCameraExposure(QFLCamera *camera);

    Q_PRIVATE_SLOT(d, void _q_exposureParameterChanged(int))
    Q_PRIVATE_SLOT(d, void _q_exposureParameterRangeChanged(int))

    QScopedPointer<QFLCameraExposurePrivate> d;
};

#endif
