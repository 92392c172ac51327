// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The media service of a decoder.

#ifndef DECODERSERVICE_H
#define DECODERSERVICE_H

#include <QtMultimedia/qmediaservice.h>

#include <memory>

class DecodeControl;
class RendererControl;
class SurfaceGroup;

class DecoderService : public QMediaService
{
    Q_OBJECT

public:
    explicit DecoderService(QObject *parent = nullptr);
    ~DecoderService() override;

    QMediaControl *requestControl(const char *name) override;
    void releaseControl(QMediaControl *control) override;

private:
    // In the order in which they need each other: the last is destroyed first.
    std::unique_ptr<SurfaceGroup> m_surfaces;
    std::unique_ptr<RendererControl> m_rendererControl;
    std::unique_ptr<DecodeControl> m_decodeControl;
    int m_rendererRequests = 0;
    int m_decodeRequests = 0;
};

#endif
