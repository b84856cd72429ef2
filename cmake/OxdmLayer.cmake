# oxdm_layer(<name> SOURCES ... [DEPS <layer> ...] [LIBS <lib> ...])
#
# Declares one layer of the library as an object library named oxdm_<name>.
# DEPS names lower layers (without the oxdm_ prefix) whose headers and link
# requirements this layer uses; LIBS names outside libraries. Every layer is
# folded into the shared liboxdm by the top-level CMakeLists.txt.
set(OXDM_LAYERS "" CACHE INTERNAL "")

function(oxdm_layer name)
  cmake_parse_arguments(L "" "" "SOURCES;DEPS;LIBS" ${ARGN})
  set(target oxdm_${name})
  add_library(${target} OBJECT ${L_SOURCES})
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
    PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  foreach(dep IN LISTS L_DEPS)
    target_link_libraries(${target} PUBLIC oxdm_${dep})
  endforeach()
  if(L_LIBS)
    target_link_libraries(${target} PUBLIC ${L_LIBS})
  endif()
  set(OXDM_LAYERS ${OXDM_LAYERS} ${target} CACHE INTERNAL "")
  # For the layering test: the layer's folder under src/ and its direct deps.
  file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR}/src ${CMAKE_CURRENT_SOURCE_DIR})
  set_property(GLOBAL APPEND_STRING PROPERTY OXDM_LAYER_MAP "${name} ${folder} ${L_DEPS}\n")
endfunction()

# oxdm_test(<name> SOURCES ... [LABELS ...]): one GoogleTest program linked
# against liboxdm; every TEST in it becomes its own ctest case. Under the
# sanitizers each case runs with OXDM_TEST_ENVIRONMENT.
function(oxdm_test name)
  cmake_parse_arguments(T "" "" "SOURCES;LABELS;LIBS" ${ARGN})
  add_executable(${name} ${T_SOURCES})
  target_link_libraries(${name} PRIVATE oxdm::oxdm GTest::gtest GTest::gtest_main ${T_LIBS})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support)
  set(properties LABELS "${T_LABELS}")
  if(OXDM_TEST_ENVIRONMENT)
    list(APPEND properties ENVIRONMENT "${OXDM_TEST_ENVIRONMENT}")
  endif()
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES ${properties})
endfunction()
