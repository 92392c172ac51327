// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The encoder and decoder elements that the backend offers.

#include "codecelements.h"

#include "codec.h"
#include "encodertraits.h"
#include "gstpointers.h"
#include "gstreamersetup.h"

#include <algorithm>

namespace {

struct Candidate
{
    CodecElement element;
    guint rank = 0;
};

// OMX elements get as far as READY without hardware and fail only at the first frame, and
// libde265dec is always two frames late.
bool isExcluded(const QByteArray &factoryName)
{
    return factoryName.startsWith("omx") || factoryName.endsWith("_omx")
            || factoryName == "libde265dec";
}

// Hardware elements often have no rank only because they are new. Software without one isn't meant
// to be found, and a software encoder with unknown settings for live video would hold frames back.
bool isSuitable(const Candidate &candidate)
{
    const CodecElement &element = candidate.element;
    if (isExcluded(element.factoryName))
        return false;
    if (element.isHardwareAccelerated)
        return true;
    return element.isEncoder ? EncoderTraits::isKnown(element.factoryName)
                             : candidate.rank > GST_RANK_NONE;
}

bool reachesReady(GstElementFactory *factory)
{
    GstElement *floating = gst_element_factory_create(factory, nullptr);
    if (!floating)
        return false;
    const GstElementPointer element(GST_ELEMENT(gst_object_ref_sink(floating)));
    const bool isReady
            = gst_element_set_state(element.get(), GST_STATE_READY) != GST_STATE_CHANGE_FAILURE;
    gst_element_set_state(element.get(), GST_STATE_NULL);
    return isReady;
}

QVector<Candidate> candidates(const Codec &codec, bool isEncoder)
{
    const GstElementFactoryListType type = isEncoder
            ? GST_ELEMENT_FACTORY_TYPE_VIDEO_ENCODER
            : GST_ELEMENT_FACTORY_TYPE_DECODER | GST_ELEMENT_FACTORY_TYPE_MEDIA_VIDEO;
    const GstCapsPointer caps(gst_caps_from_string(codec.elementCaps));
    GList *all = gst_element_factory_list_get_elements(type, GST_RANK_NONE);
    GList *fitting = gst_element_factory_list_filter(all, caps.get(),
                                                     isEncoder ? GST_PAD_SRC : GST_PAD_SINK, FALSE);
    QVector<Candidate> result;
    for (const GList *node = fitting; node; node = node->next) {
        auto *factory = static_cast<GstElementFactory *>(node->data);
        const bool isHardware
                = gst_element_factory_list_is_type(factory, GST_ELEMENT_FACTORY_TYPE_HARDWARE);
        const Candidate candidate = {
                {GST_OBJECT_NAME(factory), QString::fromLatin1(codec.name), isEncoder, isHardware},
                gst_plugin_feature_get_rank(GST_PLUGIN_FEATURE(factory))};
        if (isSuitable(candidate) && reachesReady(factory))
            result.append(candidate);
    }
    gst_plugin_feature_list_free(fitting);
    gst_plugin_feature_list_free(all);
    return result;
}

QVector<CodecElement> findElements(bool isEncoder)
{
    QVector<CodecElement> result;
    if (!GStreamerSetup::initialize())
        return result;
    for (const Codec &codec : Codec::all()) {
        QVector<Candidate> found = candidates(codec, isEncoder);
        std::stable_sort(found.begin(), found.end(),
                         [](const Candidate &a, const Candidate &b) { return a.rank > b.rank; });
        for (const Candidate &candidate : qAsConst(found))
            result.append(candidate.element);
    }
    std::stable_partition(result.begin(), result.end(), [](const CodecElement &element) {
        return element.isHardwareAccelerated;
    });
    return result;
}

} // namespace

/*!
    The usable encoder elements, those in hardware first, the better ranked ones of a codec before
    the others. They are looked for once in a process, which takes a moment: every one of them is
    opened.
*/
QVector<CodecElement> CodecElements::encoders()
{
    static const QVector<CodecElement> elements = findElements(true);
    return elements;
}

/*! The usable decoder elements, ordered and cached as encoders() are. */
QVector<CodecElement> CodecElements::decoders()
{
    static const QVector<CodecElement> elements = findElements(false);
    return elements;
}

/*! The codec names of \a elements, each once, in the order of the elements. */
QStringList CodecElements::names(const QVector<CodecElement> &elements, bool hardwareOnly)
{
    QStringList result;
    for (const CodecElement &element : elements) {
        if (element.isHardwareAccelerated || !hardwareOnly)
            result.append(element.codec);
    }
    result.removeDuplicates();
    return result;
}

/*! GStreamer's title of the element; empty when there is no such element. */
QString CodecElements::description(const QByteArray &factoryName)
{
    if (factoryName.isEmpty() || !GStreamerSetup::initialize())
        return QString();
    const GstElementFactoryPointer factory(gst_element_factory_find(factoryName.constData()));
    if (!factory)
        return QString();
    return QString::fromUtf8(
            gst_element_factory_get_metadata(factory.get(), GST_ELEMENT_METADATA_LONGNAME));
}

/*!
    The first of \a elements with the codec name or the factory name \a codecOrFactory; for an empty
    name that of the preferred codec. The factory name of the result is empty when there is none.
*/
CodecElement CodecElements::find(const QVector<CodecElement> &elements,
                                 const QString &codecOrFactory)
{
    return findAll(elements, codecOrFactory).value(0);
}

/*!
    All of \a elements that find() could choose, in their order: those of a codec, or the only one
    with a factory name.
*/
QVector<CodecElement> CodecElements::findAll(const QVector<CodecElement> &elements,
                                             const QString &codecOrFactory)
{
    QVector<CodecElement> result;
    if (codecOrFactory.isEmpty()) {
        for (const Codec &codec : Codec::all()) {
            result = findAll(elements, QString::fromLatin1(codec.name));
            if (!result.isEmpty())
                break;
        }
        return result;
    }
    for (const CodecElement &element : elements) {
        if (element.codec == codecOrFactory
            || QString::fromUtf8(element.factoryName) == codecOrFactory)
            result.append(element);
    }
    return result;
}
