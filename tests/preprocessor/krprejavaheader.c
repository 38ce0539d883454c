/* To a source that includes jni.h first, the public header shows the entry points of a Java host.
 */
#include <jni.h>

#include "include/krpre.h"

typedef jint (*tPrebuild)(JNIEnv*, jobject, jobjectArray);
typedef jstring (*tGetCH)(JNIEnv*, jobject, jstring);
typedef char tPrebuildFits[_Generic(&Java_Krpre_prebuild, tPrebuild : 1, default : -1)];
typedef char tGetCHFits[_Generic(&Java_Krpre_getCH, tGetCH : 1, default : -1)];
