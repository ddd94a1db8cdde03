# cmake -DLRELEASE=<lrelease> -DTS=<table.ts> -DQM=<table.qm> -P CompileTranslation.cmake
#
# Compiles one id-based string table and fails the build when lrelease drops a message:
# a text without an id would silently show in English (or as its bare key) in every
# language.
execute_process(COMMAND ${LRELEASE} -idbased ${TS} -qm ${QM}
  OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "lrelease failed on ${TS}:\n${output}")
endif()
if(output MATCHES "Dropped [0-9]+ message")
  file(REMOVE ${QM})
  message(FATAL_ERROR "${TS} has texts without an id (use qtTrId with a //% comment):\n${output}")
endif()
