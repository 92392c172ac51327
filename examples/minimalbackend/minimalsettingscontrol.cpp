// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What the encoder can be set to.

#include "minimalsettingscontrol.h"

#include "minimalencodecontrol.h"

MinimalSettingsControl::MinimalSettingsControl(MinimalEncodeControl *encodeControl, QObject *parent)
    : QVideoEncoderSettingsControl(parent), m_encodeControl(encodeControl)
{
}

/*! The smallest and the largest; \a continuous says that all between them will do. */
QList<QSize> MinimalSettingsControl::supportedResolutions(const QVideoEncoderSettings &,
                                                          bool *continuous) const
{
    if (continuous)
        *continuous = true;
    return {QSize(1, 1), QSize(RunLengthCodec::longestSide, RunLengthCodec::longestSide)};
}

QList<qreal> MinimalSettingsControl::supportedFrameRates(const QVideoEncoderSettings &,
                                                         bool *continuous) const
{
    if (continuous)
        *continuous = true;
    return {1, 60};
}

QStringList MinimalSettingsControl::supportedVideoCodecs() const
{
    return m_encodeControl->supportedCodecs(false);
}

QString MinimalSettingsControl::videoCodecDescription(const QString &codec) const
{
    return supportedVideoCodecs().contains(codec) ? tr("Run lengths, for demonstration")
                                                  : QString();
}

QVideoEncoderSettings MinimalSettingsControl::videoSettings() const
{
    return m_encodeControl->videoSettings();
}

void MinimalSettingsControl::setVideoSettings(const QVideoEncoderSettings &settings)
{
    m_encodeControl->setVideoSettings(settings);
}
