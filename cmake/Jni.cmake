# krpre_jni: link it where <jni.h> is included. Only the header is used, no part of a virtual machine.
# Java_JAVAC_EXECUTABLE and its companions are set when there is a Java compiler too.
find_package(Java 8 QUIET COMPONENTS Development)
if(Java_JAVAC_EXECUTABLE)
  # The header of the compiler in use goes before that of any other virtual machine.
  file(REAL_PATH ${Java_JAVAC_EXECUTABLE} javac)
  cmake_path(GET javac PARENT_PATH javac_directory)
  cmake_path(GET javac_directory PARENT_PATH java_home)
endif()
find_path(KRPRE_JNI_INCLUDE jni.h
  HINTS ${java_home}/include $ENV{JAVA_HOME}/include
  PATHS /usr/lib/jvm/default-java/include)
if(NOT KRPRE_JNI_INCLUDE)
  # A package that has hardly more than the header; a JDK is a hundred megabytes. Not kept, so that a JDK
  # installed later is found.
  find_path(KRPRE_JNI_INCLUDE jni.h PATHS /usr/include/android/nativehelper NO_CACHE)
endif()
if(NOT KRPRE_JNI_INCLUDE)
  message(FATAL_ERROR "jni.h is missing: install android-libnativehelper-dev or a JDK "
    "(default-jdk-headless), or set JAVA_HOME")
endif()
add_library(krpre_jni INTERFACE)
# A JDK keeps the types of the platform in a folder beside it.
target_include_directories(krpre_jni SYSTEM INTERFACE
  ${KRPRE_JNI_INCLUDE} ${KRPRE_JNI_INCLUDE}/linux)
