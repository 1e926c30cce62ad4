# Runs a Windows test program under wine in a new, empty wine prefix that is
# removed afterwards, so that what it writes into the Windows folder or the
# profile never meets another test.
#
#   cmake -DWINE=wine -DPROGRAM=x.exe [-DARGS=...] -P RunInFreshWinePrefix.cmake
cmake_minimum_required(VERSION 3.25)
string(RANDOM LENGTH 8 suffix)
set(prefix "$ENV{TMPDIR}")
if(prefix STREQUAL "")
  set(prefix /tmp)
endif()
set(prefix "${prefix}/qrl-wine-${suffix}")
set(ENV{WINEPREFIX} "${prefix}")
set(ENV{WINEDEBUG} "-all")
# Wine names its files on the Unix side in the locale's encoding: under the C
# locale a Windows path outside ASCII has no Unix name at all.
set(ENV{LC_ALL} "C.UTF-8")
# A program that crashes must end and fail, not wait in wine's debugger.
set(ENV{WINEDLLOVERRIDES} "winedbg.exe=d")
execute_process(COMMAND ${WINE} ${PROGRAM} ${ARGS} RESULT_VARIABLE status TIMEOUT 600)
# The prefix's server must be gone, not only told to go, before its folder
# goes: wine finds a prefix's server by the folder's inode, and the next test's
# new prefix may get this inode back at once and meet a dying server there.
execute_process(COMMAND wineserver -k)
execute_process(COMMAND wineserver -w)
file(REMOVE_RECURSE "${prefix}")
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} under wine: ${status}")
endif()
