#include "messagecatalogue.h"

#include "messagereader.h"
#include "vodmessages.h"

#include <QStringList>

namespace {
using A = MessageEntry::ArgType;
}

const QList<MessageEntry> &messageCatalogue()
{
    using namespace VodMessage;
    static const char *const vm = VodChannel::VideoManager;
    static const char *const push = VodChannel::PushApplication;
    static const char *const app = VodChannel::VideoApplication;
    static const char *const call = VodChannel::CallManager;
    static const QList<MessageEntry> catalogue = {
        {vm, PushAppExecuted, {}},
        {vm, PlayPush, {A::CString}},
        {vm, PausePush, {}},
        {vm, ResumePush, {}},
        {vm, StopPush, {}},
        {vm, StopUIPush, {}},
        {vm, StopMulticastPush, {}},
        {vm, ChangeVodWindow, {A::Int, A::Int, A::Int, A::Int}},
        {vm, SetupVod, {A::Int}},
        {vm, StartVod, {A::String}},
        {vm, ResumeVod, {A::String}},
        {vm, PauseVod, {A::Int}},
        {vm, StopVod, {}},
        {vm, ReverseVod, {A::String}},
        {vm, ForwardVod, {A::String}},
        {vm, RequestGroupList, {}},
        {vm, RequestContents, {A::Int, A::Int}},
        {vm, RequestContentsPage, {A::Int, A::Int}},

        {push, StartPush, {}},
        {push, PauseOKPush, {}},
        {push, EndOKPush, {}},
        {push, EndOKMulticastPush, {}},
        {push, StartCall, {}},
        {push, StopCall, {}},
        {push, HideVodFullScreen, {}},
        {push, ShowVodFullScreen, {}},
        {push, CurrentTime, {A::Float}},
        {push, VodSoundMute, {A::Int}},
        {push, SetupFailPush, {A::Int}},
        {push, Error, {A::Int}},

        {app, SetupOKVod, {A::Int, A::Int, A::Int, A::Float, A::Float, A::Float}},
        {app, SetupFailVod, {A::Int}},
        {app, GetGroupList, {}},
        {app, GetContentsList, {}},
        {app, CheckFocus, {}},
        {app, ClearFocus, {}},
        {app, StartOKVod, {}},
        {app, StartFailVod, {A::Int}},
        {app, PauseOKVod, {A::Float}},
        {app, PauseVodByServer, {A::Float}},
        {app, PauseFailVod, {}},
        {app, EndOKVod, {}},
        {app, ResumedOKVod, {}},
        {app, Error, {A::Int}},
        {app, StartPush, {}},
        {app, PauseOKPush, {}},
        {app, EndOKPush, {}},
        {app, StartCall, {}},
        {app, StopCall, {}},
        {app, CurrentTime, {A::Float}},
        {app, VodSoundMute, {A::Int}},
        {app, StartVideoPushApp, {}},
        {app, StopVideoPushApp, {}},
        {app, HideVodFullScreen, {}},
        {app, ShowVodFullScreen, {}},
        {app, HangUpBySmallScreen, {}},

        {call, SetVolumeVod, {A::Int}},
        {call, SetHeadsetOnOff, {}},
    };
    return catalogue;
}

const MessageEntry *findMessage(const QString &channel, const QString &signature)
{
    for (const MessageEntry &entry : messageCatalogue())
        if (channel == QLatin1String(entry.channel) && signature == QLatin1String(entry.signature))
            return &entry;
    return nullptr;
}

QString describeArguments(const MessageEntry &entry, const QByteArray &data)
{
    MessageReader in(data);
    QStringList items;
    for (MessageEntry::ArgType type : entry.arguments) {
        switch (type) {
        case MessageEntry::Int:
            items << QString::number(in.readInt());
            break;
        case MessageEntry::Float:
            items << QString::number(in.readFloat(), 'g', 6);
            break;
        case MessageEntry::String:
            items << QLatin1Char('"') + in.readString() + QLatin1Char('"');
            break;
        case MessageEntry::CString:
            items << QLatin1Char('"') + QString::fromLatin1(in.readCString()) + QLatin1Char('"');
            break;
        }
    }
    return items.join(QLatin1String(", "));
}
