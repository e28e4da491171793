# Writes MoxBuildInfo.h with the build identification. The header is rewritten
# only when its content changes, so an unchanged tree does not relink.
execute_process(COMMAND git rev-parse --short=12 HEAD WORKING_DIRECTORY ${SOURCE_DIR}
  OUTPUT_VARIABLE _revision OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE _rc1)
execute_process(COMMAND git rev-parse --abbrev-ref HEAD WORKING_DIRECTORY ${SOURCE_DIR}
  OUTPUT_VARIABLE _branch OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE _rc2)
execute_process(COMMAND git log -1 --format=%cd --date=format-local:%Y-%m-%d WORKING_DIRECTORY ${SOURCE_DIR}
  OUTPUT_VARIABLE _date OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE _rc3)
execute_process(COMMAND git log -1 --format=%cd --date=format-local:%H:%M:%S WORKING_DIRECTORY ${SOURCE_DIR}
  OUTPUT_VARIABLE _time OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE _rc4)
if(NOT _rc1 EQUAL 0 OR _revision STREQUAL "")
  set(_revision "unknown")
endif()
if(NOT _rc2 EQUAL 0 OR _branch STREQUAL "")
  set(_branch "unknown")
endif()
# The commit's own date and time keep builds of one revision identical.
if(NOT _rc3 EQUAL 0 OR _date STREQUAL "")
  string(TIMESTAMP _date "%Y-%m-%d" UTC)
endif()
if(NOT _rc4 EQUAL 0 OR _time STREQUAL "")
  string(TIMESTAMP _time "%H:%M:%S" UTC)
endif()
if(DEFINED ENV{MOX_BUILD_NUMBER})
  set(_number "$ENV{MOX_BUILD_NUMBER}")
else()
  set(_number "0")
endif()
set(_content "#pragma once
#define MOX_BUILD_VERSION \"${VERSION}\"
#define MOX_BUILD_REVISION \"${_revision}\"
#define MOX_BUILD_NUMBER \"${_number}\"
#define MOX_BUILD_BRANCH \"${_branch}\"
#define MOX_BUILD_DATE \"${_date}\"
#define MOX_BUILD_TIME \"${_time}\"
")
if(EXISTS ${OUTPUT})
  file(READ ${OUTPUT} _old)
else()
  set(_old "")
endif()
if(NOT _old STREQUAL _content)
  file(WRITE ${OUTPUT} "${_content}")
endif()
