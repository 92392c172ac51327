// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The decoder service: the controls of one decoder.

#ifndef MINIMALDECODERSERVICE_H
#define MINIMALDECODERSERVICE_H

#include <QtMultimedia/qmediaservice.h>

class MinimalDecodeControl;
class MinimalRendererControl;

class MinimalDecoderService : public QMediaService
{
    Q_OBJECT

public:
    MinimalDecoderService();
    ~MinimalDecoderService() override;

    QMediaControl *requestControl(const char *identifier) override;
    void releaseControl(QMediaControl *control) override;

private:
    MinimalRendererControl *m_rendererControl;
    MinimalDecodeControl *m_decodeControl;
};

#endif
