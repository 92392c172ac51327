// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Both paths of a call in one program, with a connection over TCP between them.

#include "picturecounter.h"
#include "receivepath.h"
#include "sendpath.h"

#include <QtCore/qcoreapplication.h>
#include <QtCore/qdebug.h>
#include <QtNetwork/qtcpserver.h>
#include <QtNetwork/qtcpsocket.h>

namespace {

const int timeoutMilliseconds = 5000;

// What a user sees in two seconds.
const int wantedPictures = 60;

void fail(const QString &text)
{
    qWarning().noquote() << text;
    QCoreApplication::exit(1);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);

    //! [connection]
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    QTcpSocket sendingEnd;
    sendingEnd.connectToHost(server.serverAddress(), server.serverPort());
    if (!server.waitForNewConnection(timeoutMilliseconds)
        || !sendingEnd.waitForConnected(timeoutMilliseconds))
        return 1;
    QTcpSocket *receivingEnd = server.nextPendingConnection();
    //! [connection]

    //! [paths]
    const QString codec = SendPath::chooseCodec();
    PictureCounter surface;
    ReceivePath receivePath(receivingEnd, codec);
    SendPath sendPath(&sendingEnd);
    QObject::connect(&sendPath, &SendPath::failed, &application, fail);
    QObject::connect(&receivePath, &ReceivePath::failed, &application, fail);
    if (!receivePath.start(&surface) || !sendPath.start(codec)) {
        qCritical("There is no backend, or it can't code video.");
        return 1;
    }
    //! [paths]

    QObject::connect(&surface, &PictureCounter::counted, &application, [](int count) {
        if (count == wantedPictures)
            QCoreApplication::quit();
    });
    return QCoreApplication::exec();
}
