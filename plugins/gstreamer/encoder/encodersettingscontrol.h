// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The settings of the encoder service.

#ifndef ENCODERSETTINGSCONTROL_H
#define ENCODERSETTINGSCONTROL_H

#include <QtMultimedia/qvideoencodersettingscontrol.h>

class EncodeControl;

class EncoderSettingsControl : public QVideoEncoderSettingsControl
{
    Q_OBJECT

public:
    explicit EncoderSettingsControl(EncodeControl *encodeControl, QObject *parent = nullptr);

    QList<QSize> supportedResolutions(const QVideoEncoderSettings &settings,
                                      bool *continuous) const override;
    QList<qreal> supportedFrameRates(const QVideoEncoderSettings &settings,
                                     bool *continuous) const override;

    QStringList supportedVideoCodecs() const override;
    QString videoCodecDescription(const QString &codec) const override;

    QVideoEncoderSettings videoSettings() const override;
    void setVideoSettings(const QVideoEncoderSettings &settings) override;

private:
    EncodeControl *m_encodeControl;
};

#endif
