// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The viewfinder settings of a camera.

#include "qflcamera.h"
#include "qflcamera_p.h"

#include <QtMultimedia/qcameraviewfindersettingscontrol.h>

#include <algorithm>
#include <cmath>

using SettingsControl = QCameraViewfinderSettingsControl;

namespace {

bool isSet(const QSize &size)
{
    return size.width() > 0 && size.height() > 0;
}

bool isSet(qreal rate)
{
    return std::abs(rate) > 1e-12;
}

bool isSameRate(float wanted, float offered)
{
    return std::abs(wanted - offered) * 100000.f <= std::min(std::abs(wanted), std::abs(offered));
}

bool matches(const QSize &wanted, const QSize &offered)
{
    return !isSet(wanted) || wanted == offered;
}

bool matches(qreal wanted, qreal offered)
{
    return !isSet(wanted) || isSameRate(float(wanted), float(offered));
}

bool matches(QVideoFrame::PixelFormat wanted, QVideoFrame::PixelFormat offered)
{
    return wanted == QVideoFrame::Format_Invalid || wanted == offered;
}

bool matches(const QCameraViewfinderSettings &wanted, const QCameraViewfinderSettings &offered)
{
    return matches(wanted.resolution(), offered.resolution())
            && matches(wanted.minimumFrameRate(), offered.minimumFrameRate())
            && matches(wanted.maximumFrameRate(), offered.maximumFrameRate())
            && matches(wanted.pixelFormat(), offered.pixelFormat())
            && matches(wanted.pixelAspectRatio(), offered.pixelAspectRatio());
}

// Areas of absurd sizes wrap around rather than overflow.
qint32 area(const QSize &size)
{
    return qint32(quint32(size.width()) * quint32(size.height()));
}

QCameraViewfinderSettings readSettings(const SettingsControl *control)
{
    QCameraViewfinderSettings settings;
    if (control->isViewfinderParameterSupported(SettingsControl::Resolution))
        settings.setResolution(control->viewfinderParameter(SettingsControl::Resolution).toSize());
    if (control->isViewfinderParameterSupported(SettingsControl::MinimumFrameRate)) {
        settings.setMinimumFrameRate(
                control->viewfinderParameter(SettingsControl::MinimumFrameRate).toReal());
    }
    if (control->isViewfinderParameterSupported(SettingsControl::MaximumFrameRate)) {
        settings.setMaximumFrameRate(
                control->viewfinderParameter(SettingsControl::MaximumFrameRate).toReal());
    }
    if (control->isViewfinderParameterSupported(SettingsControl::PixelAspectRatio)) {
        settings.setPixelAspectRatio(
                control->viewfinderParameter(SettingsControl::PixelAspectRatio).toSize());
    }
    if (control->isViewfinderParameterSupported(SettingsControl::PixelFormat)) {
        settings.setPixelFormat(control->viewfinderParameter(SettingsControl::PixelFormat)
                                        .value<QVideoFrame::PixelFormat>());
    }
    return settings;
}

// Upon each change the application may delete the camera.
void writeSettings(const QPointer<QFLCamera> &camera, SettingsControl *control,
                   const QCameraViewfinderSettings &settings)
{
    const std::pair<SettingsControl::ViewfinderParameter, QVariant> parameters[] = {
            {SettingsControl::Resolution, settings.resolution()},
            {SettingsControl::MinimumFrameRate, settings.minimumFrameRate()},
            {SettingsControl::MaximumFrameRate, settings.maximumFrameRate()},
            {SettingsControl::PixelAspectRatio, settings.pixelAspectRatio()},
            {SettingsControl::PixelFormat, int(settings.pixelFormat())},
    };
    for (const auto &[parameter, value] : parameters) {
        if (camera && control->isViewfinderParameterSupported(parameter))
            control->setViewfinderParameter(parameter, value);
    }
}

} // namespace

/*!
    Returns the settings in force: the size and the pixel aspect ratio in pixels, the frame rates in
    frames a second. Empty ones if the backend has no viewfinder settings; a backend that knows some
    parameters only leaves the others unset.
*/
QCameraViewfinderSettings QFLCamera::viewfinderSettings() const
{
    Q_D(const QFLCamera);

    if (d->viewfinderSettingsControl2)
        return d->viewfinderSettingsControl2->viewfinderSettings();
    if (d->viewfinderSettingsControl)
        return readSettings(d->viewfinderSettingsControl);
    return QCameraViewfinderSettings();
}

/*!
    Applies \a settings, with a restart of the camera if the backend can't change them while it is
    active. What is unset in them is for the backend to choose. Settings that the device doesn't
    support are not refused here: the backend reports them by error(), perhaps only when it starts.
    Does nothing if the backend has no viewfinder settings.
*/
void QFLCamera::setViewfinderSettings(const QCameraViewfinderSettings &settings)
{
    Q_D(QFLCamera);

    if (!d->viewfinderSettingsControl2 && !d->viewfinderSettingsControl)
        return;

    const QPointer<QFLCamera> self(this);
    d->_q_preparePropertyChange(QCameraControl::ViewfinderSettings);
    if (!self)
        return;
    if (d->viewfinderSettingsControl2)
        d->viewfinderSettingsControl2->setViewfinderSettings(settings);
    else
        writeSettings(self, d->viewfinderSettingsControl, settings);
}

/*!
    Returns the supported settings, in the backend's order, that have the values set in \a settings;
    frame rates match in single precision, with a tolerance of a hundred-thousandth. Empty settings
    filter nothing. The list is empty if the backend can't list its settings.
*/
QList<QCameraViewfinderSettings> QFLCamera::supportedViewfinderSettings(
        const QCameraViewfinderSettings &settings) const
{
    Q_D(const QFLCamera);

    if (!d->viewfinderSettingsControl2)
        return {};

    const auto offers = d->viewfinderSettingsControl2->supportedViewfinderSettings();
    if (settings.isNull())
        return offers;

    QList<QCameraViewfinderSettings> matching;
    std::copy_if(offers.begin(), offers.end(), std::back_inserter(matching),
                 [&](const auto &offer) { return matches(settings, offer); });
    return matching;
}

/*!
    Returns the distinct resolutions, in pixels, of the supported settings that match \a settings,
    as supportedViewfinderSettings() finds them, the smallest area first. Those of equal area come
    in no particular order.
*/
QList<QSize> QFLCamera::supportedViewfinderResolutions(
        const QCameraViewfinderSettings &settings) const
{
    QList<QSize> resolutions;
    const auto offers = supportedViewfinderSettings(settings);
    for (const QCameraViewfinderSettings &offer : offers) {
        if (!resolutions.contains(offer.resolution()))
            resolutions.append(offer.resolution());
    }
    std::sort(resolutions.begin(), resolutions.end(),
              [](const QSize &left, const QSize &right) { return area(left) < area(right); });
    return resolutions;
}

/*!
    Returns the distinct frame-rate ranges, in frames a second, of the supported settings that match
    \a settings, as supportedViewfinderSettings() finds them, the lowest maximum first and then the
    lowest minimum. Ranges are distinct that differ in the least.
*/
QList<QCamera::FrameRateRange> QFLCamera::supportedViewfinderFrameRateRanges(
        const QCameraViewfinderSettings &settings) const
{
    QList<QCamera::FrameRateRange> ranges;
    const auto offers = supportedViewfinderSettings(settings);
    for (const QCameraViewfinderSettings &offer : offers) {
        const qreal minimum = offer.minimumFrameRate();
        const qreal maximum = offer.maximumFrameRate();
        // Qt's comparison of ranges is fuzzy.
        const bool isKnown = std::any_of(ranges.begin(), ranges.end(), [=](const auto &range) {
            return range.minimumFrameRate == minimum && range.maximumFrameRate == maximum;
        });
        if (!isKnown)
            ranges.append(QCamera::FrameRateRange(minimum, maximum));
    }
    std::sort(ranges.begin(), ranges.end(), [](const auto &left, const auto &right) {
        return left.maximumFrameRate == right.maximumFrameRate
                ? left.minimumFrameRate < right.minimumFrameRate
                : left.maximumFrameRate < right.maximumFrameRate;
    });
    return ranges;
}

/*!
    Returns the distinct pixel formats of the supported settings that match \a settings, as
    supportedViewfinderSettings() finds them, in the backend's order.
*/
QList<QVideoFrame::PixelFormat> QFLCamera::supportedViewfinderPixelFormats(
        const QCameraViewfinderSettings &settings) const
{
    QList<QVideoFrame::PixelFormat> formats;
    const auto offers = supportedViewfinderSettings(settings);
    for (const QCameraViewfinderSettings &offer : offers) {
        if (!formats.contains(offer.pixelFormat()))
            formats.append(offer.pixelFormat());
    }
    return formats;
}
