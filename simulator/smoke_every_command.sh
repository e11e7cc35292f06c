# shellcheck shell=bash
# Posts every command of the interface once.

# smoke_every_command: uses and counts in the variables of `smoke`. What a command does is tested
# elsewhere; here each has to be there, to take its parameters and to answer for itself, in which
# the camera's state has its say.
smoke_every_command() {
  local command params reply count=0
  echo "every command"
  while read -r command params; do
    reply=$(post "$(request "$command" "$params")")
    if [[ $reply != '{"Response":{"Requested":"'"$command"'","Result":"'@(Success|RequestedError|DisableError)'"'* ]]; then
      printf '  > %s %s\n  < %s\n' "$command" "$params" "$reply"
      failures=$((failures + 1))
    fi
    count=$((count + 1))
  done < <(every_command)
  echo "  $count commands"
}

# Every command with the members of its parameters.
every_command() {
  cat <<'END'
MonitorStart
MonitorStop
SetZoomCtrl "Position":500
GetCamStatus
SetCamCtrl "CamCtrl":"Stop"
GetClipInfo "Slot":"A","StartIndexNo":1,"ClipNum":1
SetClipInfo "Slot":"A","IndexNo":1,"OKMark":"NoMark"
PageChange "Page":2
SetWebKeyEvent "Kind":"Iris","Key":"Auto"
SetWebSliderEvent "Kind":"ZoomBar","Position":100
SetWebXYFieldEvent "Kind":"WhPaintRB","XPosition":32,"YPosition":32
GetGPSInfo
SetWebFtpUploadAll "Server":0,"Slot":0
SetWebFtpUploadOkMarked "Server":0,"Slot":0
SetWebFtp1UploadASelect "block0":1
SetWebFtp2UploadASelect "block0":1
SetWebFtp3UploadASelect "block0":1
SetWebFtp4UploadASelect "block0":1
SetWebFtp1UploadBSelect "block0":1
SetWebFtp2UploadBSelect "block0":1
SetWebFtp3UploadBSelect "block0":1
SetWebFtp4UploadBSelect "block0":1
WebFtpOperateResponse "Response":0
SetWebButtonEvent "Kind":"Tally","Button":"Off"
GetSystemInfo
SetStreamingCtrl "Streaming":"Off"
SessionRenewal "Update":1
GetPresetZoomPosition
SetPresetZoomPosition "ID":"A","Position":500
GetStreamingSettings
SetStreamingSettings "Resolution":"1280x720","Bitrate":"5.0M"
SetStreamingResolution "Resolution":"1920x1080"
SetStreamingFramerate "Framerate":"60i"
SetStreamingBitrate "Bitrate":"8.0M"
GetStreamingServerSettings "ID":0
SetStreamingServerSettingsUDP "ID":0,"Alias":"a","DstAddress":"10.0.0.1","DstPort":5000,"PcrJitter":0
SetStreamingServerSettingsRTSP "ID":0,"Alias":"a","Password":"p"
SetStreamingServerSettingsZIXI "ID":0,"Alias":"a","DstAddress":"10.0.0.1","DstPort":2088,"StreamId":"s","Password":"p","Latency":100,"AdaptiveBitrate":1
SetStreamingServerSettingsRTMP "ID":0,"Alias":"a","DstUrl":"rtmp://ingest.example/live","StreamKey":"k"
SetStreamingServerSettingsRTP "ID":0,"Alias":"a","DstAddress":"10.0.0.1","DstPort":5004,"Smpte2022Fec":0,"FecMatrixL":10,"FecMatrixD":10
GetCurrentStreamingServerID
SetCurrentStreamingServerID "ID":0
AvailableStreamingResolutionSettings
AvailableStreamingFramerateSettings "Resolution":"1920x1080"
AvailableStreamingBitrateSettings "Type":"RTMP","Resolution":"1920x1080","Framerate":"60i"
SetTallyLampPriority "Priority":"Camera"
SetTallyLampCtrl "Sw":"Off"
JpegEncode "Operate":"Stop"
SetCldstrmLogin "Username":"studio","Password":"secret","ServerURL":"https://cloud.example"
SetCldstrmLogout
SetCldstrmEventListObtain
GetCldstrmEventList
SetCldstrmStreamInfoObtain "EventID":0
SetCldstrmStreamInfoToStrmsrv "EventID":0,"StrmsrvID":0
SetCldstrmClearStatus "Login":1,"GetEventList":1,"GetStreamInfo":1
SetIFBCtrl "Streaming":"Stop"
GetIFBSettings
SetIFBSettings "Function":"Enable","Address":"10.0.0.1","Port":5000,"Mountpoint":"STUDIO"
ZoomSwitchOperation "Direction":"Stop","Speed":0
SeesawSwitchOperation "Kind":"ZoomSeesaw","Direction":"Stop","Speed":0
HeartbeatConfirmation
SetTallyControlWithPriority "Sw":"Off"
SystemRequest "Request":"Resume"
SetStudioTally "Indication":"Off"
SetStudioTallyWithoutSession "Indication":"Off"
GetNTPStatus
SetNTPServer "Address":"10.0.0.1"
SetNTPSettings "TcSync":"Off"
END
}
