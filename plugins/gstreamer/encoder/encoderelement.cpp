// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Sets an encoder element up for live video, and makes it produce key frames.

#include "encoderelement.h"

#include "encoderconfiguration.h"
#include "logging.h"

#include <gst/video/video.h>

namespace {

constexpr int secondsBetweenKeyFrames = 2;

// Less is no rate at all for elements that count in kilobits, and more is out of x265enc's range.
constexpr int lowestBitRate = 1000;
constexpr int highestBitRate = 100000000;

bool isInKilobits(GParamSpec *parameter)
{
    const QByteArray description = QByteArray(g_param_spec_get_blurb(parameter)).toLower();
    return description.contains("kbit") || description.contains("kbps")
            || description.contains("kilobit");
}

} // namespace

/*!
    \class EncoderElement

    Returns each frame before it is given the next, with a key frame at regular intervals, so that a
    receiver that joins late gets a picture without asking. Options that the application set are
    properties of the element and come last.
*/

/*! Sets up \a element, which is linked but doesn't run yet. */
EncoderElement::EncoderElement(GstElementPointer element, const EncoderConfiguration &configuration)
    : m_element(std::move(element)),
      m_traits(EncoderTraits::of(configuration.element().factoryName)),
      m_keyFrameDistance(qMax(1, qRound(configuration.frameRate() * secondsBetweenKeyFrames))),
      m_finestQuantizer(qRound(configuration.finestQuantizer() * m_traits.largestQuantizer))
{
    apply(m_traits.live);
    apply(m_traits.keyFrameDistance);
    if (m_finestQuantizer > 0)
        apply(m_traits.constantQuality);
    applyBitRate(configuration.bitRate());
    setOptions(configuration);

    const GstPadPointer sink(gst_element_get_static_pad(m_element.get(), "sink"));
    m_input.reset(gst_pad_get_peer(sink.get()));
    m_probe = gst_pad_add_probe(m_input.get(), GST_PAD_PROBE_TYPE_BUFFER, beforeFrame, this,
                                nullptr);
}

/*! The element's pipeline must not run any more. */
EncoderElement::~EncoderElement()
{
    gst_pad_remove_probe(m_input.get(), m_probe);
}

/*! Sets the target, in bits per second; the next frame is encoded with it. */
void EncoderElement::setBitRate(int bitRate)
{
    applyBitRate(bitRate);
    if (!takesBitRateWhileRunning())
        restart();
}

/*!
    Makes the next frame that enters the element, and comes \a after that running time if there is
    one, a key frame by whatever the element obeys.
*/
void EncoderElement::requestKeyFrame(GstClockTime after)
{
    if (after != GST_CLOCK_TIME_NONE)
        m_after = after;
    // A restart that is due anyway must not be forgotten.
    Order present = NoOrder;
    m_order.compare_exchange_strong(present,
                                    m_traits.takesKeyFrameRequests ? KeyFrameOrder : RestartOrder);
}

/*! Makes the next frame that enters the element a key frame; no element can ignore this. */
void EncoderElement::restart()
{
    m_order = RestartOrder;
}

GParamSpec *EncoderElement::property(const QByteArray &name) const
{
    return g_object_class_find_property(G_OBJECT_GET_CLASS(m_element.get()), name.constData());
}

bool EncoderElement::takesBitRateWhileRunning() const
{
    const GParamSpec *parameter = property("bitrate");
    return m_traits.takesBitRateWhileRunning
            || (parameter && (parameter->flags & GST_PARAM_MUTABLE_PLAYING));
}

void EncoderElement::applyBitRate(int wanted)
{
    const int bitRate = qBound(lowestBitRate, wanted, highestBitRate);
    QByteArray settings = m_traits.bitRate;
    settings.replace("%bits", QByteArray::number(bitRate));
    settings.replace("%kilobits", QByteArray::number(bitRate / 1000));
    const QByteArrayList list = settings.split(' ');
    for (const QByteArray &setting : list) {
        GParamSpec *parameter = property(setting.left(setting.indexOf('=')));
        const bool isInThousands = parameter && isInKilobits(parameter);
        const QByteArray number = QByteArray::number(isInThousands ? bitRate / 1000 : bitRate);
        apply(QByteArray(setting).replace("%unit", number));
    }
}

void EncoderElement::setOptions(const EncoderConfiguration &configuration)
{
    const QVariantMap options = configuration.streamSettings().encodingOptions();
    for (auto option = options.begin(); option != options.end(); ++option) {
        if (!property(option.key().toUtf8()))
            qCWarning(lcFaceLinkGStreamer)
                    << configuration.element().factoryName << "has no property" << option.key();
        else
            set(option.key().toUtf8(), option.value().toString().toUtf8());
    }
}

void EncoderElement::set(const QByteArray &name, const QByteArray &value)
{
    gst_util_set_object_arg(G_OBJECT(m_element.get()), name.constData(), value.constData());
}

void EncoderElement::apply(QByteArray settings)
{
    settings.replace("%distance", QByteArray::number(m_keyFrameDistance));
    settings.replace("%seconds", QByteArray::number(secondsBetweenKeyFrames));
    settings.replace("%quantizer", QByteArray::number(m_finestQuantizer));
    const QByteArrayList list = settings.split(' ');
    for (const QByteArray &setting : list) {
        const int separator = setting.indexOf('=');
        if (property(setting.left(separator)))
            set(setting.left(separator), setting.mid(separator + 1));
    }
}

// Runs on the streaming thread, just before a frame enters the element.
GstPadProbeReturn EncoderElement::beforeFrame(GstPad *input, GstPadProbeInfo *info, gpointer self)
{
    auto *element = static_cast<EncoderElement *>(self);
    const GstClockTime after = element->m_after;
    if (after != GST_CLOCK_TIME_NONE && GST_BUFFER_PTS(GST_PAD_PROBE_INFO_BUFFER(info)) <= after)
        return GST_PAD_PROBE_OK;
    const Order order = element->m_order.exchange(NoOrder);
    if (order == KeyFrameOrder) {
        gst_pad_push_event(
                input,
                gst_video_event_new_downstream_force_key_unit(
                        GST_CLOCK_TIME_NONE, GST_CLOCK_TIME_NONE, GST_CLOCK_TIME_NONE, TRUE, 0));
    } else if (order == RestartOrder) {
        element->restartBehind(input);
    }
    return GST_PAD_PROBE_OK;
}

// The frame waits here, so none is lost. Linking again makes the input repeat its format.
void EncoderElement::restartBehind(GstPad *input)
{
    const GstPadPointer sink(gst_element_get_static_pad(m_element.get(), "sink"));
    gst_pad_unlink(input, sink.get());
    gst_element_set_state(m_element.get(), GST_STATE_READY);
    const bool isBack = gst_element_sync_state_with_parent(m_element.get());
    if (!isBack || gst_pad_link(input, sink.get()) != GST_PAD_LINK_OK)
        GST_ELEMENT_ERROR(m_element.get(), RESOURCE, FAILED, ("The encoder can't be restarted"),
                          (nullptr));
}
