// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Camera, encoder and sender.

#ifndef SENDPATH_H
#define SENDPATH_H

#include "framesender.h"

#include <qflcamera.h>
#include <qflencoder.h>

class SendPath : public QObject
{
    Q_OBJECT

public:
    explicit SendPath(QIODevice *connection);
    ~SendPath() override;

    static QString chooseCodec();

    bool start(const QString &codec);

Q_SIGNALS:
    void failed(const QString &text);

private:
    void connectErrors();

    FrameSender m_sender;
    QFLEncoder m_encoder;
    QFLCamera m_camera;
};

#endif
