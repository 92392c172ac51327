// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Sets how the camera exposes its pictures.

#include "exposurecontrol.h"

#include "opendevice.h"

#include <linux/v4l2-controls.h>

namespace {

using Exposure = QCameraExposure;

// Whether the camera chooses a number itself.
enum Mode { Automatic, Manual };

const QCameraExposureControl::ExposureParameter parameters[]
        = {QCameraExposureControl::ISO, QCameraExposureControl::ShutterSpeed,
           QCameraExposureControl::ExposureCompensation, QCameraExposureControl::ExposureMode,
           QCameraExposureControl::MeteringMode};

// What the driver's numbers are to one ISO step, one second and one EV.
const int sensitivityScale = 1000;
const int shutterScale = 10000;
const int compensationScale = 1000;

DeviceMenu sensitivityMode(OpenDevice *device)
{
    return {device,
            V4L2_CID_ISO_SENSITIVITY_AUTO,
            {{Automatic, V4L2_ISO_SENSITIVITY_AUTO}, {Manual, V4L2_ISO_SENSITIVITY_MANUAL}}};
}

/*! The same setting as exposureMode(), but with an automatic aperture where that is possible. */
DeviceMenu shutterMode(OpenDevice *device)
{
    return {device,
            V4L2_CID_EXPOSURE_AUTO,
            {{Automatic, V4L2_EXPOSURE_AUTO},
             {Automatic, V4L2_EXPOSURE_APERTURE_PRIORITY},
             {Manual, V4L2_EXPOSURE_SHUTTER_PRIORITY},
             {Manual, V4L2_EXPOSURE_MANUAL}}};
}

DeviceMenu exposureMode(OpenDevice *device)
{
    return {device,
            V4L2_CID_EXPOSURE_AUTO,
            {{Exposure::ExposureAuto, V4L2_EXPOSURE_AUTO},
             {Exposure::ExposureAuto, V4L2_EXPOSURE_APERTURE_PRIORITY},
             {Exposure::ExposureManual, V4L2_EXPOSURE_MANUAL},
             {Exposure::ExposureManual, V4L2_EXPOSURE_SHUTTER_PRIORITY}}};
}

DeviceMenu sceneMode(OpenDevice *device)
{
    return {device,
            V4L2_CID_SCENE_MODE,
            {{Exposure::ExposureAuto, V4L2_SCENE_MODE_NONE},
             {Exposure::ExposurePortrait, V4L2_SCENE_MODE_PORTRAIT},
             {Exposure::ExposureNight, V4L2_SCENE_MODE_NIGHT},
             {Exposure::ExposureBacklight, V4L2_SCENE_MODE_BACKLIGHT},
             {Exposure::ExposureSports, V4L2_SCENE_MODE_SPORTS},
             {Exposure::ExposureBeach, V4L2_SCENE_MODE_BEACH_SNOW},
             {Exposure::ExposureSnow, V4L2_SCENE_MODE_BEACH_SNOW},
             {Exposure::ExposureLandscape, V4L2_SCENE_MODE_LANDSCAPE},
             {Exposure::ExposureSunset, V4L2_SCENE_MODE_SUNSET},
             {Exposure::ExposureFireworks, V4L2_SCENE_MODE_FIREWORKS},
             {Exposure::ExposureParty, V4L2_SCENE_MODE_PARTY_INDOOR},
             {Exposure::ExposureCandlelight, V4L2_SCENE_MODE_CANDLE_LIGHT}}};
}

/*! Qt's average is weighted towards the centre. */
DeviceMenu meteringMode(OpenDevice *device)
{
    return {device,
            V4L2_CID_EXPOSURE_METERING,
            {{Exposure::MeteringMatrix, V4L2_EXPOSURE_METERING_MATRIX},
             {Exposure::MeteringAverage, V4L2_EXPOSURE_METERING_CENTER_WEIGHTED},
             {Exposure::MeteringAverage, V4L2_EXPOSURE_METERING_AVERAGE},
             {Exposure::MeteringSpot, V4L2_EXPOSURE_METERING_SPOT}}};
}

template<typename Value, typename Number> QVariant variant(const std::optional<Number> &number)
{
    return number ? QVariant::fromValue(Value(*number)) : QVariant();
}

template<typename Value, typename Number> QVariantList variants(const QList<Number> &numbers)
{
    QVariantList result;
    for (Number number : numbers)
        result.append(QVariant::fromValue(Value(number)));
    return result;
}

/*! Not a number for a value of another kind, which no range contains. */
qreal toNumber(const QVariant &value)
{
    bool isNumber = false;
    const qreal number = value.toReal(&isNumber);
    return isNumber ? number : qQNaN();
}

/*! -1, which no menu contains, for a value of another kind. */
int toChoice(const QVariant &value)
{
    bool isNumber = false;
    const int choice = value.toInt(&isNumber);
    return isNumber ? choice : -1;
}

} // namespace

/*!
    \class ExposureControl

    Offers what the open Video4Linux device can do: sensitivity, shutter speed, compensation,
    exposure mode and metering mode. Nothing is supported while the camera is unloaded, nor by
    another kind of camera; the control is there nevertheless, because it is requested before the
    device is chosen. parameterRangeChanged() says what a device brings or takes away.

    A request is forgotten when the device is closed, but the device keeps the value. What the
    camera changes by itself is seen by actualValue() and not announced. Snow and beach are one mode
    to a device, which reads back as beach.
*/

/*! \a device is borrowed and must outlive the control. */
ExposureControl::ExposureControl(OpenDevice *device, QObject *parent)
    : QCameraExposureControl(parent),
      m_sensitivity(device, V4L2_CID_ISO_SENSITIVITY, sensitivityScale),
      m_sensitivityMode(sensitivityMode(device)),
      m_shutterSpeed(device, V4L2_CID_EXPOSURE_ABSOLUTE, shutterScale),
      m_shutterMode(shutterMode(device)),
      m_compensation(device, V4L2_CID_AUTO_EXPOSURE_BIAS, compensationScale),
      m_exposureMode(::exposureMode(device)),
      m_sceneMode(sceneMode(device)),
      m_meteringMode(meteringMode(device))
{
    connect(device, &OpenDevice::changed, this, &ExposureControl::handleDevice);
}

bool ExposureControl::isParameterSupported(ExposureParameter parameter) const
{
    bool continuous = false;
    return !supportedParameterRange(parameter, &continuous).isEmpty();
}

/*! The smallest and the largest value if the range is continuous, else all values. */
QVariantList ExposureControl::supportedParameterRange(ExposureParameter parameter,
                                                      bool *continuous) const
{
    *continuous = false;
    switch (parameter) {
    case ISO:
        return variants<int>(m_sensitivity.values(continuous));
    case ShutterSpeed:
        return variants<qreal>(m_shutterSpeed.values(continuous));
    case ExposureCompensation:
        return variants<qreal>(m_compensation.values(continuous));
    case ExposureMode:
        return variants<Exposure::ExposureMode>(exposureModes());
    case MeteringMode:
        return variants<Exposure::MeteringMode>(m_meteringMode.values());
    default:
        return {};
    }
}

/*! Invalid if nothing was requested of the open device, or that it chooses the value. */
QVariant ExposureControl::requestedValue(ExposureParameter parameter) const
{
    return m_requested.value(parameter);
}

QVariant ExposureControl::actualValue(ExposureParameter parameter) const
{
    switch (parameter) {
    case ISO:
        return variant<int>(m_sensitivity.value());
    case ShutterSpeed:
        return variant<qreal>(m_shutterSpeed.value());
    case ExposureCompensation:
        return variant<qreal>(m_compensation.value());
    case ExposureMode:
        return variant<Exposure::ExposureMode>(exposureMode());
    case MeteringMode:
        return variant<Exposure::MeteringMode>(m_meteringMode.value());
    default:
        return QVariant();
    }
}

/*!
    A number between two that the device can do becomes the nearest of them. A shutter speed or a
    sensitivity makes the camera leave its automatic choice. An invalid \a value gives the choice
    back to the camera; the compensation and the metering mode become what they are in a new device.
*/
bool ExposureControl::setValue(ExposureParameter parameter, const QVariant &value)
{
    const bool isSet = apply(parameter, value);
    if (isSet)
        setRequestedValue(parameter, value);
    announceChanges();
    return isSet;
}

bool ExposureControl::apply(ExposureParameter parameter, const QVariant &value)
{
    switch (parameter) {
    case ISO:
        return setNumber(m_sensitivity, m_sensitivityMode, value);
    case ShutterSpeed:
        return setNumber(m_shutterSpeed, m_shutterMode, value);
    case ExposureCompensation:
        return value.isValid() ? m_compensation.setValue(toNumber(value)) : m_compensation.reset();
    case ExposureMode:
        return setExposureMode(value.isValid() ? toChoice(value) : int(Exposure::ExposureAuto));
    case MeteringMode:
        return value.isValid() ? m_meteringMode.setValue(toChoice(value)) : m_meteringMode.reset();
    default:
        return false;
    }
}

bool ExposureControl::setNumber(const DeviceNumber &number, const DeviceMenu &mode,
                                const QVariant &value)
{
    if (!value.isValid())
        return mode.setValue(Automatic);
    const qreal wanted = toNumber(value);
    if (!number.contains(wanted) || (mode.isPresent() && !mode.setValue(Manual)))
        return false;
    return number.setValue(wanted);
}

/*! A scene and the automatic or manual mode are two settings of the device, and one of Qt's. */
bool ExposureControl::setExposureMode(int mode)
{
    if (!exposureModes().contains(mode))
        return false;
    const bool isScene = mode != Exposure::ExposureAuto && mode != Exposure::ExposureManual;
    if (m_sceneMode.isPresent()
        && !m_sceneMode.setValue(isScene ? mode : int(Exposure::ExposureAuto)))
        return false;
    return isScene || !m_exposureMode.isPresent() || m_exposureMode.setValue(mode);
}

QList<int> ExposureControl::exposureModes() const
{
    QList<int> modes = m_exposureMode.values();
    const QList<int> scenes = m_sceneMode.values();
    for (int scene : scenes) {
        if (!modes.contains(scene))
            modes.append(scene);
    }
    return modes;
}

std::optional<int> ExposureControl::exposureMode() const
{
    const std::optional<int> scene = m_sceneMode.value();
    const std::optional<int> mode = m_exposureMode.value();
    const bool isScene = scene && *scene != Exposure::ExposureAuto;
    return isScene || !mode ? scene : mode;
}

void ExposureControl::handleDevice()
{
    for (ExposureParameter parameter : parameters)
        setRequestedValue(parameter, QVariant());
    announceChanges();
}

void ExposureControl::setRequestedValue(ExposureParameter parameter, const QVariant &value)
{
    if (value == m_requested.value(parameter))
        return;
    m_requested.insert(parameter, value);
    Q_EMIT requestedValueChanged(parameter);
}

/*! One setting of the device can change others, so all are compared with what was known. */
void ExposureControl::announceChanges()
{
    for (ExposureParameter parameter : parameters) {
        bool continuous = false;
        const Known now = {supportedParameterRange(parameter, &continuous), actualValue(parameter)};
        const Known before = m_known.value(parameter);
        m_known.insert(parameter, now);
        if (now.range != before.range)
            Q_EMIT parameterRangeChanged(parameter);
        if (now.value != before.value)
            Q_EMIT actualValueChanged(parameter);
    }
}
