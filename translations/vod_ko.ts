<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko" sourcelanguage="en">
<context>
    <name>MVodInfoView</name>
    <message>
        <location filename="../src/applications/vod/browser/mvodinfoview.cpp" line="+26"/>
        <source>Video Contents</source>
        <translation>동영상 콘텐츠</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Media Information</source>
        <translation>미디어 정보</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Play</source>
        <translation>재생</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Back</source>
        <translation>뒤로</translation>
    </message>
    <message>
        <location line="+85"/>
        <source>Title</source>
        <translation>제목</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>PlayTime</source>
        <translation>재생 시간</translation>
    </message>
</context>
<context>
    <name>PlayerAccessibility</name>
    <message>
        <location filename="../src/applications/vod/player/playeraccessibility.cpp" line="+18"/>
        <source>Stopped</source>
        <translation>정지됨</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Playing</source>
        <translation>재생 중</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Paused</source>
        <translation>일시 정지됨</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Interrupted</source>
        <translation>중단됨</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Stopping</source>
        <translation>정지하는 중</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Paused for a broadcast</source>
        <translation>방송 때문에 일시 정지됨</translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Broadcast</source>
        <translation>방송</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Video</source>
        <translation>동영상</translation>
    </message>
    <message>
        <location line="+2"/>
        <location line="+19"/>
        <source>%1: %2</source>
        <extracomment>Accessible name of a player: what plays, then its state (&quot;Broadcast: Playing&quot;).
----------
A key and what it does now (&quot;Select: pause&quot;).</extracomment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <location line="-11"/>
        <source>Time %1.</source>
        <translation>시간 %1.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Time %1 of %2.</source>
        <translation>시간 %1 / %2.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Volume %1 of 16, muted.</source>
        <translation>음량 %1/16, 음소거.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Volume %1 of 16.</source>
        <translation>음량 %1/16.</translation>
    </message>
    <message>
        <location line="+12"/>
        <location line="+4"/>
        <location line="+2"/>
        <source>Select</source>
        <translation>선택</translation>
    </message>
    <message>
        <location line="-6"/>
        <location line="+19"/>
        <source>pause</source>
        <translation>일시 정지</translation>
    </message>
    <message>
        <location line="-18"/>
        <source>Context 1</source>
        <translation>컨텍스트 1</translation>
    </message>
    <message>
        <location line="+0"/>
        <location line="+19"/>
        <source>forward</source>
        <translation>앞으로 감기</translation>
    </message>
    <message>
        <location line="-18"/>
        <source>Context 2</source>
        <translation>컨텍스트 2</translation>
    </message>
    <message>
        <location line="+0"/>
        <location line="+16"/>
        <source>rewind</source>
        <translation>뒤로 감기</translation>
    </message>
    <message>
        <location line="-14"/>
        <location line="+21"/>
        <source>play</source>
        <translation>재생</translation>
    </message>
    <message>
        <location line="-19"/>
        <location line="+21"/>
        <source>resume</source>
        <translation>이어서 재생</translation>
    </message>
    <message>
        <location line="-19"/>
        <location line="+24"/>
        <source>Back</source>
        <translation>뒤로</translation>
    </message>
    <message>
        <location line="-24"/>
        <location line="+20"/>
        <location line="+4"/>
        <location line="+6"/>
        <source>stop</source>
        <translation>정지</translation>
    </message>
    <message>
        <location line="-30"/>
        <source>close</source>
        <translation>닫기</translation>
    </message>
    <message>
        <location line="+3"/>
        <location line="+23"/>
        <source>Full</source>
        <extracomment>The key under the drawn &quot;Full&quot; strip.</extracomment>
        <translation>전체</translation>
    </message>
    <message>
        <location line="-23"/>
        <location line="+23"/>
        <source>full screen</source>
        <translation>전체 화면</translation>
    </message>
    <message>
        <location line="-16"/>
        <source>Key 1</source>
        <extracomment>The side keys of the full-screen players, beside the rows of the control panel.</extracomment>
        <translation>버튼 1</translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+6"/>
        <location line="+2"/>
        <source>Key 2</source>
        <translation>버튼 2</translation>
    </message>
    <message>
        <location line="-7"/>
        <location line="+8"/>
        <location line="+10"/>
        <source>Key 3</source>
        <translation>버튼 3</translation>
    </message>
    <message>
        <location line="-17"/>
        <location line="+19"/>
        <source>Max</source>
        <translation>최대</translation>
    </message>
    <message>
        <location line="-19"/>
        <location line="+19"/>
        <source>wide picture</source>
        <translation>와이드 화면</translation>
    </message>
    <message>
        <location line="-18"/>
        <location line="+19"/>
        <source>small screen</source>
        <translation>작은 화면</translation>
    </message>
    <message>
        <location line="+4"/>
        <source>%1.</source>
        <translation>%1.</translation>
    </message>
</context>
<context>
    <name>QNoticeDialog</name>
    <message>
        <location filename="../src/platform/qnoticedialog.cpp" line="+20"/>
        <source>Warning</source>
        <translation>경고</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Information</source>
        <translation>알림</translation>
    </message>
</context>
<context>
    <name>VideoPushFullView</name>
    <message>
        <location filename="../src/applications/vod/push/videopushfullview.cpp" line="+176"/>
        <source>Max</source>
        <translation>최대</translation>
    </message>
</context>
<context>
    <name>VideoPushView</name>
    <message>
        <location filename="../src/applications/vod/push/videopushview.cpp" line="+48"/>
        <source>Video Contents</source>
        <translation>동영상 콘텐츠</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Broadcast</source>
        <translation>방송</translation>
    </message>
    <message>
        <location line="+199"/>
        <source>It&apos;s not broadcasting time</source>
        <translation>방송 시간이 아닙니다</translation>
    </message>
    <message>
        <location line="+32"/>
        <source>Temporary disconnection from VCS server</source>
        <translation>VCS 서버와의 연결이 잠시 끊겼습니다</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>If you want to quit this broadcast, Please push &apos;stop&apos; button</source>
        <translation>방송을 끝내려면 &apos;정지&apos; 버튼을 누르십시오</translation>
    </message>
    <message>
        <location line="+56"/>
        <source>Full</source>
        <translation>전체</translation>
    </message>
</context>
<context>
    <name>VodPlayFullScreenView</name>
    <message>
        <location filename="../src/applications/vod/vodplayer/vodplayfullscreenview.cpp" line="+246"/>
        <source>Max</source>
        <translation>최대</translation>
    </message>
</context>
<context>
    <name>VodPlaySmallScreenView</name>
    <message>
        <location filename="../src/applications/vod/vodplayer/vodplaysmallscreenview.cpp" line="+138"/>
        <source>A video has been stopped by the VCS server.</source>
        <translation>VCS 서버가 동영상을 중지했습니다.</translation>
    </message>
    <message>
        <location line="+173"/>
        <source>Full</source>
        <translation>전체</translation>
    </message>
</context>
<context>
    <name>VodPlayView</name>
    <message>
        <location filename="../src/applications/vod/player/vodplayview.cpp" line="+146"/>
        <source>Now connecting server</source>
        <translation>서버에 연결하는 중입니다</translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Please try agian</source>
        <translation>다시 시도해 주십시오</translation>
    </message>
    <message>
        <location line="+186"/>
        <source>Video will be resumed</source>
        <translation>동영상을 이어서 재생합니다</translation>
    </message>
    <message>
        <location line="+157"/>
        <source>Mute</source>
        <translation>음소거</translation>
    </message>
    <message>
        <location line="+134"/>
        <source>Video Contents</source>
        <translation>동영상 콘텐츠</translation>
    </message>
</context>
<context>
    <name>vod</name>
    <message>
        <location filename="../src/applications/vod/vod.cpp" line="+81"/>
        <location line="+168"/>
        <source>Video Contents</source>
        <translation>동영상 콘텐츠</translation>
    </message>
    <message>
        <location line="-53"/>
        <source>Getting contents</source>
        <translation>콘텐츠를 가져오는 중</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Getting List</source>
        <translation>목록을 가져오는 중</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Fail to Get List</source>
        <translation>목록을 가져오지 못했습니다</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Getting Media Information</source>
        <translation>미디어 정보를 가져오는 중</translation>
    </message>
    <message>
        <location line="+47"/>
        <source>VOD Contents</source>
        <translation>VOD 콘텐츠</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>VOD List</source>
        <translation>VOD 목록</translation>
    </message>
    <message>
        <location line="+3"/>
        <source>VOD Title</source>
        <translation>VOD 제목</translation>
    </message>
    <message>
        <location line="+15"/>
        <source>Back</source>
        <translation>뒤로</translation>
    </message>
    <message>
        <location line="+196"/>
        <source>Can not be played</source>
        <translation>재생할 수 없습니다</translation>
    </message>
</context>
</TS>
