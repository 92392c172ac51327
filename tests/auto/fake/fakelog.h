// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The list of what the objects under test asked the fakes for, and what they logged.

#ifndef FAKELOG_H
#define FAKELOG_H

#include <QtCore/qbytearraylist.h>
#include <QtCore/qobject.h>

#include <functional>

/*!
    Begins with an empty list, and enters every message of the process as "type category: text"
    while the object lives. A service enters "name+control" when a control is requested, and
    "name-control" when it is released; so does a provider with services. A control enters
    "service.control call".
*/
class FakeLog
{
public:
    FakeLog() : m_previous(qInstallMessageHandler(addMessage)) { entries().clear(); }
    ~FakeLog() { qInstallMessageHandler(m_previous); }

    /*! Enters what no application's code runs in, such as a question that a control answers. */
    static void addQuestion(const QByteArray &entry) { entries().append(entry); }
    static void add(const QByteArray &entry)
    {
        addQuestion(entry);
        if (const auto call = onEntry())
            call();
    }
    static void add(const QObject *who, const QByteArray &call)
    {
        add(who->objectName().toLatin1() + call);
    }

    /*! What is called at each entry: the application's code in every slot, sink and surface. */
    static std::function<void()> &onEntry()
    {
        static std::function<void()> function;
        return function;
    }

    /*! Returns the entries since the last call. */
    static QByteArray take()
    {
        const QByteArray text = entries().join(", ");
        entries().clear();
        return text;
    }

private:
    Q_DISABLE_COPY(FakeLog)

    static QByteArrayList &entries()
    {
        static QByteArrayList list;
        return list;
    }
    static void addMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
    {
        static const char *const types[] = {"debug", "warning", "critical", "fatal", "info"};
        addQuestion(QByteArray(types[type]) + ' ' + context.category + ": " + text.toUtf8());
    }

    QtMessageHandler m_previous;
};

/*! Calls \a function at the next entry, from within the call that is entered. */
inline void callOnce(const std::function<void()> &function)
{
    FakeLog::onEntry() = [function] {
        FakeLog::onEntry() = nullptr;
        function();
    };
}

/*! Puts a name in the place of each X of a log. */
inline QByteArray named(QByteArray log, char name)
{
    return log.replace('X', name);
}

#define COMPARE_LOG(text) QCOMPARE(FakeLog::take(), QByteArray(text))

#endif
