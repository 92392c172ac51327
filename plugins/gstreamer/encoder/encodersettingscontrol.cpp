// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The settings of the encoder service.

#include "encodersettingscontrol.h"

#include "codecelements.h"
#include "encodecontrol.h"

/*!
    \class EncoderSettingsControl

    Holds the settings in the encode control, which applies them.
*/

/*! \a encodeControl is borrowed and must outlive the control. */
EncoderSettingsControl::EncoderSettingsControl(EncodeControl *encodeControl, QObject *parent)
    : QVideoEncoderSettingsControl(parent), m_encodeControl(encodeControl)
{
}

/*!
    The smallest and the largest size for the codec of \a settings; all even sizes between them are
    possible. None for an unknown codec.
*/
QList<QSize> EncoderSettingsControl::supportedResolutions(const QVideoEncoderSettings &settings,
                                                          bool *continuous) const
{
    if (continuous)
        *continuous = true;
    const CodecElement element = CodecElements::find(CodecElements::encoders(), settings.codec());
    if (element.factoryName.isEmpty())
        return QList<QSize>();
    return {EncoderConfiguration::smallestSize(element),
            EncoderConfiguration::largestSize(element)};
}

/*! The lowest and the highest rate; all between them are possible. */
QList<qreal> EncoderSettingsControl::supportedFrameRates(const QVideoEncoderSettings &,
                                                         bool *continuous) const
{
    if (continuous)
        *continuous = true;
    return {EncoderConfiguration::lowestFrameRate, EncoderConfiguration::highestFrameRate};
}

QStringList EncoderSettingsControl::supportedVideoCodecs() const
{
    return m_encodeControl->supportedCodecs(false);
}

/*! Names the element that would encode \a codec; empty for an unknown one. */
QString EncoderSettingsControl::videoCodecDescription(const QString &codec) const
{
    return CodecElements::description(
            CodecElements::find(CodecElements::encoders(), codec).factoryName);
}

QVideoEncoderSettings EncoderSettingsControl::videoSettings() const
{
    return m_encodeControl->videoSettings();
}

/*! See EncodeControl::setVideoSettings() for when the settings apply. */
void EncoderSettingsControl::setVideoSettings(const QVideoEncoderSettings &settings)
{
    m_encodeControl->setVideoSettings(settings);
}
