// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The media service of a decoder.

#ifndef DECODERSERVICE_H
#define DECODERSERVICE_H

#include <QtMultimedia/qmediaservice.h>

#include <memory>

class DecoderService : public QMediaService
{
    Q_OBJECT

public:
    explicit DecoderService(QObject *parent = nullptr);
    ~DecoderService() override;

    QMediaControl *requestControl(const char *name) override;
    void releaseControl(QMediaControl *control) override;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

#endif
