// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The encoder service: the controls of one encoder.

#ifndef MINIMALENCODERSERVICE_H
#define MINIMALENCODERSERVICE_H

#include <QtMultimedia/qmediaservice.h>

class MinimalEncodeControl;
class MinimalSettingsControl;
class MinimalSourceControl;

class MinimalEncoderService : public QMediaService
{
    Q_OBJECT

public:
    MinimalEncoderService();
    ~MinimalEncoderService() override;

    QMediaControl *requestControl(const char *identifier) override;
    void releaseControl(QMediaControl *control) override;

private:
    MinimalEncodeControl *m_encodeControl;
    MinimalSettingsControl *m_settingsControl;
    MinimalSourceControl *m_sourceControl;
};

#endif
