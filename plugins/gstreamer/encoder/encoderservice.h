// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The media service of an encoder.

#ifndef ENCODERSERVICE_H
#define ENCODERSERVICE_H

#include <QtMultimedia/qmediaservice.h>

#include <memory>

class EncoderService : public QMediaService
{
    Q_OBJECT

public:
    explicit EncoderService(QObject *parent = nullptr);
    ~EncoderService() override;

    QMediaControl *requestControl(const char *name) override;
    void releaseControl(QMediaControl *control) override;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

#endif
