// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// One call: the camera's pictures to the peer, and the peer's onto a surface.

#include "call.h"

#include "cameraselection.h"
#include "codecselection.h"

#include <qflcamerainfo.h>
#include <qflcodecinfo.h>
#include <qfldecodingvideosink.h>

#include <chrono>

namespace {

// Longer than the jitter buffer holds a frame back.
const int drainMilliseconds = 200;

qint64 monotonicMicroseconds()
{
    using namespace std::chrono;
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
}

} // namespace

/*!
    \class Call

    Sends: camera, encoder, RtpSender. Receives: RtpReceiver, decoding sink, decoder, remote
    surface. The camera's viewfinder is the local surface. CallNetwork joins the sender and the
    receiver with the peer.
*/

/*!
    \fn void Call::finished()

    Emitted once, when the call has ended by finish() or by an error, and nothing is in flight any
    more.
*/

Call::Call(const CallSettings &settings, QObject *parent)
    : QObject(parent),
      m_settings(settings),
      m_statistics(settings.isLoopback()),
      m_localSurface(settings.headless ? FrameSurface::CountFrames : FrameSurface::ShowFrames),
      m_remoteSurface(FrameSurface::ShowFrames),
      m_network(settings)
{
    m_drainTimer.setSingleShot(true);
    m_drainTimer.setInterval(drainMilliseconds);
    connect(&m_drainTimer, &QTimer::timeout, this, &Call::finished);
}

Call::~Call()
{
    if (m_camera) {
        m_camera->unload();
        m_camera->setViewfinder(nullptr);
        m_camera->unbind(m_encoder.get());
    }
    if (m_decoder) {
        m_decoder->stop();
        m_decoder->setVideoSurface(nullptr);
    }
}

FrameSurface *Call::localSurface()
{
    return &m_localSurface;
}

FrameSurface *Call::remoteSurface()
{
    return &m_remoteSurface;
}

/*! Starts the call. On failure nothing is signalled: the result says what is wrong. */
CallError Call::start()
{
    CallError error = CameraSelection::announceFile(m_settings);
    if (error.code != CallError::NoError)
        return error;
    const QFLCameraInfo camera = CameraSelection::find(m_settings, &error);
    if (error.code != CallError::NoError)
        return error;
    const QFLCodecInfo encoder = CodecSelection::find(m_settings, &error);
    if (error.code != CallError::NoError)
        return error;
    error = m_network.open(RtpPayload::forCodec(encoder.codec()));
    if (error.code != CallError::NoError)
        return error;
    error = startReceiving();
    if (error.code != CallError::NoError)
        return error;
    return startSending(camera, encoder);
}

/*! Stops the camera, lets what is in flight arrive, and then emits finished(). */
void Call::finish()
{
    if (m_finishing)
        return;
    m_finishing = true;
    m_statistics.stop();
    // A camera that failed is unloaded, and stopping it would load it again.
    if (m_camera->state() == QCamera::ActiveState)
        m_camera->stop();
    m_drainTimer.start();
}

/*! The error that ended the call. */
CallError Call::error() const
{
    return m_error;
}

/*! The statistics with the counts as they are now. */
const CallStatistics &Call::updatedStatistics()
{
    m_statistics.takeCounts(counts());
    return m_statistics;
}

CallError Call::startReceiving()
{
    m_decoder = std::make_unique<QFLDecoder>();
    m_decoder->setVideoSurface(&m_remoteSurface);
    auto *sink = new QFLDecodingVideoSink(m_decoder.get());
    if (!sink->link(m_network.receiver()))
        return {CallError::NoCodec,
                tr("the decoder does not start: %1").arg(m_decoder->errorString())};
    return CallError();
}

CallError Call::startSending(const QFLCameraInfo &camera, const QFLCodecInfo &encoder)
{
    m_encoder = std::make_unique<QFLEncoder>();
    m_camera = std::make_unique<QFLCamera>(camera);
    connectMedia();
    m_camera->load();
    const QCameraViewfinderSettings viewfinder
            = CameraSelection::viewfinderSettings(*m_camera, m_settings);
    m_camera->setViewfinderSettings(viewfinder);
    m_camera->setViewfinder(&m_localSurface);
    m_encoder->setVideoSettings(
            CodecSelection::encoderSettings(encoder, viewfinder.resolution(), m_settings));
    if (!m_network.sender()->link(m_encoder.get()))
        return {CallError::NoCodec, tr("the encoder takes no sink")};
    if (!m_camera->bind(m_encoder.get()))
        return {CallError::NoCamera, tr("the camera takes no encoder")};
    m_statistics.start();
    m_camera->start();
    return m_error;
}

void Call::connectMedia()
{
    connect(m_camera.get(), QOverload<QCamera::Error>::of(&QFLCamera::error), this, [this] {
        fail(CallError::NoCamera, tr("the camera failed: %1").arg(m_camera->errorString()));
    });
    // An error that leaves the codec running, a damaged frame say, is no reason to end the call.
    connect(m_encoder.get(), &QFLEncoder::errorChanged, this, [this] {
        if (m_encoder->status() < QFLEncoder::StartingStatus)
            fail(CallError::NoCodec, tr("the encoder failed: %1").arg(m_encoder->errorString()));
    });
    connect(m_decoder.get(), &QFLDecoder::errorChanged, this, [this] {
        if (m_decoder->status() < QFLDecoder::StartingStatus)
            fail(CallError::NoCodec, tr("the decoder failed: %1").arg(m_decoder->errorString()));
    });
    connect(&m_network, &CallNetwork::failed, this, [this](const QString &text) {
        fail(CallError::NetworkError, tr("the network failed: %1").arg(text));
    });
    connect(&m_network, &CallNetwork::keyFrameRequested, m_encoder.get(), &QFLEncoder::flush);
    connect(m_encoder.get(), &QFLEncoder::encodedVideoFrame, this, [this] { ++m_framesEncoded; });
    if (m_settings.isLoopback())
        connect(&m_remoteSurface, &FrameSurface::framePresented, this, &Call::measureLatency);
}

// In the loopback a frame keeps the time of its capture, by the monotonic clock, on the whole way.
void Call::measureLatency(qint64 startTime)
{
    m_statistics.addLatency(monotonicMicroseconds() - startTime);
    if (m_finishing)
        m_drainTimer.start();
}

void Call::fail(CallError::Code code, const QString &text)
{
    if (m_error.code != CallError::NoError || m_finishing)
        return;
    m_error = {code, text};
    finish();
}

CallCounts Call::counts() const
{
    CallCounts counts;
    counts.captured = m_localSurface.framesPresented();
    counts.encoded = m_framesEncoded;
    counts.decoded = m_remoteSurface.framesArrived();
    counts.presented = m_remoteSurface.framesPresented();
    counts.packetsLost = m_network.packetsLost();
    if (!m_network.sender())
        return counts;
    counts.sent = m_network.sender()->framesSent();
    counts.bytesSent = m_network.sender()->bytesSent();
    counts.received = m_network.receiver()->framesReceived();
    counts.bytesReceived = m_network.receiver()->bytesReceived();
    return counts;
}
