// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What the encoder can be set to.

#ifndef MINIMALSETTINGSCONTROL_H
#define MINIMALSETTINGSCONTROL_H

#include <QtMultimedia/qvideoencodersettingscontrol.h>

class MinimalEncodeControl;

class MinimalSettingsControl : public QVideoEncoderSettingsControl
{
    Q_OBJECT

public:
    MinimalSettingsControl(MinimalEncodeControl *encodeControl, QObject *parent);

    QList<QSize> supportedResolutions(const QVideoEncoderSettings &settings,
                                      bool *continuous) const override;
    QList<qreal> supportedFrameRates(const QVideoEncoderSettings &settings,
                                     bool *continuous) const override;
    QStringList supportedVideoCodecs() const override;
    QString videoCodecDescription(const QString &codec) const override;

    QVideoEncoderSettings videoSettings() const override;
    void setVideoSettings(const QVideoEncoderSettings &settings) override;

private:
    MinimalEncodeControl *m_encodeControl;
};

#endif
