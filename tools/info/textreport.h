// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// An inventory as text for people.

#ifndef TEXTREPORT_H
#define TEXTREPORT_H

#include <QtCore/qcoreapplication.h>
#include <QtCore/qjsonobject.h>
#include <QtCore/qstringlist.h>

class TextReport
{
    Q_DECLARE_TR_FUNCTIONS(TextReport)

public:
    explicit TextReport(const QJsonObject &inventory);

    QString text() const;

private:
    void addCameras();
    void addViewfinderSettings(const QJsonObject &camera);
    void addCodecs(const QString &key);

    QJsonObject m_inventory;
    QStringList m_lines;
};

#endif
