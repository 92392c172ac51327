// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// An inventory as text for people.

#include "textreport.h"

#include <QtCore/qjsonarray.h>

#include <limits>

namespace {

QString positionText(const QString &position)
{
    if (position == QLatin1String("front"))
        return TextReport::tr("at the front");
    if (position == QLatin1String("back"))
        return TextReport::tr("at the back");
    return TextReport::tr("position unknown");
}

QString instancesText(int instances)
{
    if (instances == std::numeric_limits<int>::max())
        return TextReport::tr("any number at once");
    return TextReport::tr("%1 at once").arg(instances);
}

QString codecText(const QJsonObject &codec)
{
    return QStringLiteral("  %1\t%2\t%3, %4, %5")
            .arg(codec[QLatin1String("codec")].toString(), codec[QLatin1String("id")].toString(),
                 codec[QLatin1String("description")].toString(),
                 codec[QLatin1String("hardware")].toBool() ? TextReport::tr("hardware")
                                                           : TextReport::tr("software"),
                 instancesText(codec[QLatin1String("maxInstances")].toInt()));
}

} // namespace

/*! Of what Inventory::collect() found. */
TextReport::TextReport(const QJsonObject &inventory) : m_inventory(inventory)
{
    m_lines.append(tr("Cameras:"));
    addCameras();
    m_lines.append(tr("Encoders:"));
    addCodecs(QStringLiteral("encoders"));
    m_lines.append(tr("Decoders:"));
    addCodecs(QStringLiteral("decoders"));
}

QString TextReport::text() const
{
    return m_lines.join(QLatin1Char('\n'));
}

void TextReport::addCameras()
{
    const QJsonArray cameras = m_inventory[QLatin1String("cameras")].toArray();
    if (cameras.isEmpty())
        m_lines.append(tr("  none"));
    for (const QJsonValue &value : cameras) {
        const QJsonObject camera = value.toObject();
        m_lines.append(
                QStringLiteral("  %1\t%2, %3, %4%5")
                        .arg(camera[QLatin1String("name")].toString(),
                             camera[QLatin1String("description")].toString(),
                             positionText(camera[QLatin1String("position")].toString()),
                             tr("turned by %1°").arg(camera[QLatin1String("orientation")].toInt()),
                             camera[QLatin1String("default")].toBool() ? tr(", the default")
                                                                       : QString()));
        addViewfinderSettings(camera);
    }
}

void TextReport::addViewfinderSettings(const QJsonObject &camera)
{
    const QJsonArray offers = camera[QLatin1String("viewfinderSettings")].toArray();
    for (const QJsonValue &value : offers) {
        const QJsonObject offer = value.toObject();
        m_lines.append(tr("    %1x%2, %3 to %4 frames a second, %5")
                               .arg(offer[QLatin1String("width")].toInt())
                               .arg(offer[QLatin1String("height")].toInt())
                               .arg(offer[QLatin1String("minimumFrameRate")].toDouble())
                               .arg(offer[QLatin1String("maximumFrameRate")].toDouble())
                               .arg(offer[QLatin1String("pixelFormat")].toString()));
    }
}

void TextReport::addCodecs(const QString &key)
{
    const QJsonArray codecs = m_inventory[key].toArray();
    if (codecs.isEmpty())
        m_lines.append(tr("  none"));
    for (const QJsonValue &codec : codecs)
        m_lines.append(codecText(codec.toObject()));
}
