// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// Keeps encoded frames away from a decoder until it can decode them.

#ifndef BITSTREAMGATE_H
#define BITSTREAMGATE_H

#include <QtCore/qbytearray.h>
#include <QtCore/qstring.h>

class BitstreamGate
{
public:
    enum Verdict { Admitted, Kept, AwaitingKeyFrame, Malformed };

    void reset(const QString &codec);
    void close();

    Verdict examine(QByteArray *data);

private:
    Verdict examineAccessUnit(QByteArray *data);
    Verdict examineVp8Frame(const QByteArray &data);

    QString m_codec;
    QByteArray m_sequenceParameters;
    QByteArray m_pictureParameters;
    bool m_isOpen = false;
    bool m_parametersArePending = false;
};

#endif
