#pragma once

#include <QLatin1String>
#include <QString>

// Every channel and message signature that the module exchanges with the video
// manager, the call manager and the other video applications. Handlers compare
// signatures with these by exact, case-sensitive equality.

namespace VodChannel {
inline constexpr char VideoManager[] = "QPE/VideoManager";
inline constexpr char PushApplication[] = "QPE/PushApplication";
inline constexpr char VideoApplication[] = "QPE/VideoApplication";
inline constexpr char CallManager[] = "QPE/CallManager";
}

namespace VodMessage {
// Requests to the video manager ("QPE/VideoManager").
inline constexpr char PushAppExecuted[] = "pushAppExecuted()";
inline constexpr char PlayPush[] = "playPush(QString)";
inline constexpr char PausePush[] = "pausePush()";
inline constexpr char ResumePush[] = "resumePush()";
inline constexpr char StopPush[] = "stopPush()";
inline constexpr char StopUIPush[] = "stopUIPush()";
inline constexpr char StopMulticastPush[] = "stopMulticastPush()";
inline constexpr char ChangeVodWindow[] = "changeVodWindow(int,int,int,int)";
inline constexpr char SetupVod[] = "setupVod(int)";
inline constexpr char StartVod[] = "startVod(QString)";
inline constexpr char ResumeVod[] = "resumeVod(QString)";
inline constexpr char PauseVod[] = "pauseVod(int)";
inline constexpr char StopVod[] = "stopVod()";
inline constexpr char ReverseVod[] = "reverseVod(QString)";
inline constexpr char ForwardVod[] = "forwardVod(QString)";
inline constexpr char RequestGroupList[] = "requestGroupList()";
inline constexpr char RequestContents[] = "requestContents(int,int)";
inline constexpr char RequestContentsPage[] = "requestContentsPage(int,int)";

// Push notifications ("QPE/PushApplication"); several also travel on
// "QPE/VideoApplication".
inline constexpr char StartPush[] = "startPush()";
inline constexpr char PauseOKPush[] = "pauseOKPush()";
inline constexpr char EndOKPush[] = "endOKPush()";
inline constexpr char EndOKMulticastPush[] = "endOKMulticastPush()";
inline constexpr char StartCall[] = "startcall()";
inline constexpr char StopCall[] = "stopcall()";
inline constexpr char HideVodFullScreen[] = "hideVodFullScreen()";
inline constexpr char ShowVodFullScreen[] = "showVodFullScreen()";
inline constexpr char CurrentTime[] = "currentTime(float)";
inline constexpr char VodSoundMute[] = "vodSoundMute(int)";
inline constexpr char SetupFailPush[] = "setupFailPush(int)";
inline constexpr char Error[] = "error(int)";

// VOD notifications ("QPE/VideoApplication").
inline constexpr char SetupOKVod[] = "setupOKVod(int,int,int,float,float,float)";
inline constexpr char SetupFailVod[] = "setupFailVod(int)";
inline constexpr char GetGroupList[] = "getGroupList()";
inline constexpr char GetContentsList[] = "getContentsList()";
inline constexpr char CheckFocus[] = "checkFocus()";
inline constexpr char ClearFocus[] = "clearFocus()";
inline constexpr char StartOKVod[] = "startOKVod()";
inline constexpr char StartFailVod[] = "startFailVod(int)";
inline constexpr char PauseOKVod[] = "pauseOKVod(float)";
inline constexpr char PauseVodByServer[] = "pauseVodByServer(float)";
inline constexpr char PauseFailVod[] = "pauseFailVod()";
inline constexpr char EndOKVod[] = "endOKVod()";
inline constexpr char ResumedOKVod[] = "resumedOKVod()";
inline constexpr char StartVideoPushApp[] = "startVideoPushApp()";
inline constexpr char StopVideoPushApp[] = "stopVideoPushApp()";
inline constexpr char HangUpBySmallScreen[] = "hangUpBySmallScreen()";

// Requests to the call manager ("QPE/CallManager").
inline constexpr char SetVolumeVod[] = "setVolume_vod(int)";
inline constexpr char SetHeadsetOnOff[] = "setHeadset_onoff()";
}

// Whether a received signature is that one: exact, case-sensitive equality.
inline bool isMessage(const QString &message, const char *signature)
{
    return message == QLatin1String(signature);
}
