// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A choice that a camera's driver offers, in Qt's terms.

#ifndef DEVICEMENU_H
#define DEVICEMENU_H

#include <QtCore/qlist.h>
#include <QtCore/qvector.h>

#include <optional>

class OpenDevice;

class DeviceMenu
{
public:
    struct Choice
    {
        int value;
        int deviceValue;
    };

    DeviceMenu(OpenDevice *device, quint32 id, const QVector<Choice> &choices);

    bool isPresent() const;
    QList<int> values() const;

    std::optional<int> value() const;
    bool setValue(int value) const;
    bool reset() const;

private:
    OpenDevice *m_device;
    quint32 m_id;
    QVector<Choice> m_choices;
};

#endif
