# shellcheck shell=bash
# Posts requests through the web server and compares the replies.
source simulator/smoke_cloud.sh
source simulator/smoke_every_command.sh

# smoke PORT SESSION: shows each request and reply; status 1 if one differs.
smoke() {
  local url="http://127.0.0.1:$1/cgi-bin/camera_remote.cgi" session=$2 failures=0

  expect_reply "a reply with data" \
    '{"Request":{"Command":"GetSystemInfo","SessionID":"'"$session"'"}}' \
    '{"Response":{"Requested":"GetSystemInfo","Result":"Success","Data":{"Model":"RV130","Destination":"US","ApiVersion":"1.08.0","Serial":"13250042"}}}'
  expect_reply "a command that needs no session" \
    '{"Request":{"Command":"HeartbeatConfirmation"}}' \
    '{"Response":{"Requested":"HeartbeatConfirmation","Result":"Success","Data":{"VideoOutput":"On","StudioTally":"Off"}}}'
  expect_reply "a result word from the control daemon" \
    '{"Request":{"Command":"MonitorStart","SessionID":"'"$session"'"}}' \
    '{"Response":{"Requested":"MonitorStart","Result":"Success"}}'
  expect_reply "data from the control daemon" \
    '{"Request":{"Command":"PageChange","SessionID":"'"$session"'","Params":{"Page":1}}}' \
    '{"Response":{"Requested":"PageChange","Result":"Success","Data":{"AllowedPage":{"PlanningMetadata":1,"EditMetadata":1,"ViewRemote":1,"CameraControl":1,"Setting":1}}}}'
  expect_reply "a change" \
    '{"Request":{"Command":"SetStudioTallyWithoutSession","Params":{"Indication":"Program"}}}' \
    '{"Response":{"Requested":"SetStudioTallyWithoutSession","Result":"Success"}}'
  expect_reply "the state after it" \
    '{"Request":{"Command":"HeartbeatConfirmation"}}' \
    '{"Response":{"Requested":"HeartbeatConfirmation","Result":"Success","Data":{"VideoOutput":"On","StudioTally":"Program"}}}'
  expect_reply "a clip" \
    '{"Request":{"Command":"GetClipInfo","SessionID":"'"$session"'","Params":{"Slot":"A","StartIndexNo":12,"ClipNum":20}}}' \
    '{"Response":{"Requested":"GetClipInfo","Result":"Success","Data":{"ClipNum":1,"ClipInfo":[{"IndexNo":12,"Name":"A001C012","TC":"00:55:03.10-00:56:18.11","DateTime":"2023-11-23 T08:55:17","OKMark":"NoMark","AspectRaotp":"16:9","Edit":"Enable"}]}}}'
  expect_reply "its OK mark set" \
    '{"Request":{"Command":"SetClipInfo","SessionID":"'"$session"'","Params":{"Slot":"A","IndexNo":12,"OKMark":"Mark"}}}' \
    '{"Response":{"Requested":"SetClipInfo","Result":"Success"}}'
  expect_reply "the clip after it" \
    '{"Request":{"Command":"GetClipInfo","SessionID":"'"$session"'","Params":{"Slot":"A","StartIndexNo":12,"ClipNum":1}}}' \
    '{"Response":{"Requested":"GetClipInfo","Result":"Success","Data":{"ClipNum":1,"ClipInfo":[{"IndexNo":12,"Name":"A001C012","TC":"00:55:03.10-00:56:18.11","DateTime":"2023-11-23 T08:55:17","OKMark":"Mark","AspectRaotp":"16:9","Edit":"Enable"}]}}}'
  expect_reply "an upload of two clips" \
    '{"Request":{"Command":"SetWebFtp2UploadBSelect","SessionID":"'"$session"'","Params":{"block0":-2147483648,"block1":1}}}' \
    '{"Response":{"Requested":"SetWebFtp2UploadBSelect","Result":"Success"}}'
  expect_reply "another one while it goes on" \
    '{"Request":{"Command":"SetWebFtpUploadAll","SessionID":"'"$session"'","Params":{"Server":0,"Slot":0}}}' \
    '{"Response":{"Requested":"SetWebFtpUploadAll","Result":"DisableError"}}'
  expect_reply "no session id" \
    '{"Request":{"Command":"MonitorStart"}}' \
    '{"Response":{"Result":"FormatError"}}'
  expect_reply "the session id of another client" \
    '{"Request":{"Command":"MonitorStart","SessionID":"not-'"$session"'"}}' \
    '{"Response":{"Result":"SessionError"}}'
  expect_reply "an unknown command" \
    '{"Request":{"Command":"GetGpsInfo","SessionID":"'"$session"'"}}' \
    '{"Response":{"Result":"CommandError"}}'
  expect_reply "a missing parameter" \
    '{"Request":{"Command":"PageChange","SessionID":"'"$session"'","Params":{}}}' \
    '{"Response":{"Result":"RequestedError"}}'

  smoke_cloud
  smoke_every_command

  if ((failures > 0)); then
    echo "$failures replies differ"
    return 1
  fi
  echo "every reply is as expected"
}

# expect_reply DESCRIPTION REQUEST REPLY: uses the caller's url and counts in its failures.
expect_reply() {
  local reply
  reply=$(post "$2")
  printf '%s\n  > %s\n  < %s\n' "$1" "$2" "$reply"
  expect_equal "$reply" "$3"
}

# expect_success COMMAND [PARAMS]
expect_success() {
  expect_reply "$1" "$(request "$@")" '{"Response":{"Requested":"'"$1"'","Result":"Success"}}'
}

# expect_data DESCRIPTION COMMAND PARAMS DATA
expect_data() {
  expect_reply "$1" "$(request "$2" "$3")" \
    '{"Response":{"Requested":"'"$2"'","Result":"Success","Data":{'"$4"'}}}'
}

# expect_equal ACTUAL EXPECTED
expect_equal() {
  if [[ $1 != "$2" ]]; then
    printf '  expected: %s\n' "$2"
    failures=$((failures + 1))
  fi
}

# request COMMAND [PARAMS]: the request's text; PARAMS are the members of "Params".
request() {
  printf '{"Request":{"Command":"%s","SessionID":"%s"%s}}' "$1" "$session" \
    "${2:+,\"Params\":{$2\}}"
}

# post REQUEST: shows the reply.
post() {
  curl --silent --show-error --fail --noproxy '*' --max-time 10 --data "$1" "$url" || true
}
