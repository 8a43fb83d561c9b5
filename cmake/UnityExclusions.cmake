# Sources compiled on their own in unity builds: their file-local helpers share a name with a
# neighbour's (the decoder's request handlers are all add/get/del), or a type of its own
# would count as declared in a header. Listed here, as globs,
# rather than renamed, so the sanitizer presets' unity builds stay out of the code's way.
set(kvms_unity_alone
  kvms_matrix/worker TvWallJson.cpp
  decoder state/NetworkSettings.cpp
  decoder state/OperationLog.cpp
  decoder protocol/*Requests.cpp
  decoder monitor/WallPainter.cpp)
while(kvms_unity_alone)
  list(POP_FRONT kvms_unity_alone dir pattern)
  file(GLOB files ${PROJECT_SOURCE_DIR}/${dir}/${pattern})
  set_source_files_properties(${files} DIRECTORY ${PROJECT_SOURCE_DIR}/${dir}
    PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endwhile()
