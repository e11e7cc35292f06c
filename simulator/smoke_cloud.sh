# shellcheck shell=bash
# Walks through the cloud streaming service as a web page does: from the login to a stream.

# smoke_cloud: uses and counts in the variables of `smoke`.
smoke_cloud() {
  expect_success SetCldstrmLogin \
    '"Username":"studio","Password":"secret","ServerURL":"ftp://cloud.example"'
  expect_cloud_status "a login at no web address" \
    '"LoginStatus":"Failed","GetEventListStatus":"Idle","GetStreamInfoStatus":"Idle","Error":"Url"'
  expect_success SetCldstrmLogin \
    '"Username":"studio","Password":"secret","ServerURL":"https://cloud.example"'
  expect_cloud_status "a login" \
    '"LoginStatus":"Finished","GetEventListStatus":"Idle","GetStreamInfoStatus":"Idle","Error":"None"'
  expect_data "the list before it is obtained" GetCldstrmEventList '' '"EventNum":0'
  expect_success SetCldstrmEventListObtain
  expect_cloud_status "the list obtained" \
    '"LoginStatus":"Finished","GetEventListStatus":"Finished","GetStreamInfoStatus":"Idle","Error":"None"'
  expect_data "the list of events" GetCldstrmEventList '' \
    '"EventNum":3,"EventInfo":[{"Title":"Morning news"},{"Title":"City council, \"open house\""},{"Title":"Cup final"}]'
  expect_reply "stream information before it is obtained" \
    "$(request SetCldstrmStreamInfoToStrmsrv '"EventID":2,"StrmsrvID":1')" \
    '{"Response":{"Requested":"SetCldstrmStreamInfoToStrmsrv","Result":"RequestedError"}}'
  expect_data "the server before" GetCurrentStreamingServerID '' '"ID":0'
  expect_success SetCldstrmStreamInfoObtain '"EventID":2'
  expect_cloud_status "stream information obtained" \
    '"LoginStatus":"Finished","GetEventListStatus":"Finished","GetStreamInfoStatus":"Finished","Error":"None"'
  expect_success SetCldstrmStreamInfoToStrmsrv '"EventID":2,"StrmsrvID":1'
  expect_data "the server after" GetCurrentStreamingServerID '' '"ID":1'
  # What is read back of an alias ends at its first blank.
  expect_data "the server's settings" GetStreamingServerSettings '"ID":1' \
    '"Alias":"Cup","Type":"RTMP","Rtmp":{"DstUrl":"rtmp://sport.example/app","StreamKey":"cupf-1166-cccc"}'
  expect_success SetStreamingCtrl '"Streaming":"On"'
  expect_success SetStreamingCtrl '"Streaming":"Off"'
  expect_success SetCldstrmClearStatus '"Login":0,"GetEventList":1,"GetStreamInfo":1'
  expect_cloud_status "the status of two steps cleared" \
    '"LoginStatus":"Finished","GetEventListStatus":"Idle","GetStreamInfoStatus":"Idle","Error":"None"'
  expect_success SetCldstrmLogout
  expect_cloud_status "logged out" \
    '"LoginStatus":"Idle","GetEventListStatus":"Idle","GetStreamInfoStatus":"Idle","Error":"None"'
}

# expect_cloud_status DESCRIPTION MEMBERS: waits for the step in progress to end.
expect_cloud_status() {
  local status
  for _ in {1..50}; do
    status=$(post "$(request GetCamStatus)")
    status=${status##*\"CloudStreaming\":\{}
    status=${status%%\}*}
    if [[ $status != *Doing* ]]; then
      break
    fi
    sleep 0.1
  done
  printf '%s\n  < %s\n' "$1" "$status"
  expect_equal "$status" "$2"
}
