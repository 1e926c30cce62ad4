# Reads the export and import tables of a Windows DLL (objdump -p) and fails
# unless it exports exactly QORExtenderQuery and QORExtender2, by those plain
# names, and imports only from DLLs that every Windows has. With NM given (the
# 32-bit DLL), the two must also be __stdcall functions of 3 and 10 words:
# their symbols carry the decoration @12 and @40.
#
#   cmake -DOBJDUMP=... [-DNM=...] -DDLL=... -P check_dll_tables.cmake
cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND ${OBJDUMP} -p ${DLL} OUTPUT_VARIABLE listing RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${OBJDUMP} -p failed on ${DLL}")
endif()

# The export names follow the "[Ordinal/Name Pointer] Table" heading.
string(REGEX MATCH "\\[Ordinal/Name Pointer\\] Table[^\n]*\n(([ \t]+\\[[ 0-9]+\\][^\n]*\n)*)"
       export_block "${listing}")
string(REGEX MATCHALL "\\[[ 0-9]+\\][ \t]+[^\n]+" export_lines "${CMAKE_MATCH_1}")
set(exports "")
foreach(line IN LISTS export_lines)
  string(REGEX REPLACE "^\\[[ 0-9]+\\][ \t]+" "" name "${line}")
  list(APPEND exports "${name}")
endforeach()
list(SORT exports)
if(NOT exports STREQUAL "QORExtender2;QORExtenderQuery")
  message(FATAL_ERROR "${DLL} exports: '${exports}'")
endif()

# System DLLs only; a mingw runtime DLL here would be missing on the user's
# machine.
set(allowed ADVAPI32.dll COMCTL32.dll GDI32.dll KERNEL32.dll msvcrt.dll OLE32.dll OLEAUT32.dll
            SHELL32.dll SHLWAPI.dll USER32.dll VERSION.dll)
string(TOUPPER "${allowed}" allowed)
string(REGEX MATCHALL "DLL Name: [^\n]+" import_lines "${listing}")
set(imports "")
foreach(line IN LISTS import_lines)
  string(REGEX REPLACE "DLL Name: " "" name "${line}")
  string(STRIP "${name}" name)
  list(APPEND imports "${name}")
  string(TOUPPER "${name}" upper)
  if(NOT upper IN_LIST allowed)
    message(FATAL_ERROR "${DLL} imports from ${name}, which not every Windows has")
  endif()
endforeach()
if(NM)
  execute_process(COMMAND ${NM} ${DLL} OUTPUT_VARIABLE symbols RESULT_VARIABLE status)
  foreach(decorated _QORExtenderQuery@12 _QORExtender2@40)
    if(NOT status EQUAL 0 OR NOT symbols MATCHES " T ${decorated}\n")
      message(FATAL_ERROR "${DLL} has no __stdcall ${decorated}")
    endif()
  endforeach()
endif()
message(STATUS "exports: ${exports}; imports: ${imports}")
