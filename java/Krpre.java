import java.io.File;
import java.net.URISyntaxException;
import java.security.CodeSource;
import java.util.LinkedHashSet;
import java.util.Set;

/**
 * The source preprocessor of Korel for Java hosts.
 *
 * <pre>
 * Krpre preprocessor = new Krpre();
 * int result = preprocessor.prebuild(new String[] {"", "@Farea.prw", "-Iinclude;" + Krpre.headers()});
 * String header = preprocessor.getCH("units.ch");
 * </pre>
 *
 * <p>Before the first line of every source the standard header, {@code std.ch}, is read; a run fails if
 * it is not found. It and others come with the library, but the library does not look for them by
 * itself: it is for the host to name their directory, {@link #headers}, in {@code -I}.
 *
 * <p>The class stands in the default package because the native library names its functions so. Loading
 * it loads the library: the file that the system property {@code krpre.library} names when that is
 * set; otherwise {@code libkrpre.so} beside the class's jar, or in {@code ../../lib} as seen from
 * there, which is where both are installed and built; otherwise wherever the virtual machine itself
 * looks, the directories of {@code java.library.path}. An {@link UnsatisfiedLinkError} tells every
 * place that was tried.
 *
 * <p>Objects hold nothing and may be shared by threads. Runs in several threads do not disturb each
 * other as long as those that write to the same directory have different tags ({@code @I}).
 */
public class Krpre {
  /** What {@link #prebuild} returns when every file was preprocessed, or there was none. */
  public static final int OK = 0;
  /** A source has an error. */
  public static final int ERROR = 1;
  /** A source could not be read, or a line of it is too long. */
  public static final int BAD_SOURCE = 15;
  /** An output file could not be written, or something failed inside. */
  public static final int OUTPUT_FAILED = -1;

  static {
    loadLibrary();
  }

  /**
   * Preprocesses the files that the arguments name and writes one output file for each.
   *
   * @param arguments as of a command line. Element 0 stands for the program's name and is not read;
   *     null elements are skipped; null is no argument at all. {@code @F} and a name is a source file,
   *     {@code @O} an output directory, {@code -I} a list of include directories separated by {@code
   *     ;}, that of {@link #headers} among them, {@code @I} a tag for temporary files. Strings reach the
   *     preprocessor in the default encoding, or as UTF-8 when that lacks one of their characters.
   * @return one of the constants above, or the positive code of the converter of foreign sources. The
   *     last file that failed decides. The messages of the run go to the process's standard output
   *     and have been written when the call returns.
   * @throws IllegalArgumentException when an element holds the character 0. It has been skipped, and
   *     the run has taken place without it.
   * @throws OutOfMemoryError likewise
   */
  public native int prebuild(String[] arguments);

  /**
   * Reads a header, whether it is stored as it is or packed.
   *
   * @param file its name; null names no file
   * @return its text with "\r\n" behind it, decoded as UTF-8 when it is valid UTF-8 and as
   *     Windows-1252 otherwise. Empty when there is no such file, when it cannot be read or is larger
   *     than 16 MiB. A packed file whose data is damaged ends the virtual machine.
   * @throws OutOfMemoryError when the text does not fit into memory
   */
  public native String getCH(String file);

  /**
   * Names the directory of the headers that come with the library, {@code std.ch} among them, for
   * {@code -I}.
   *
   * @return its name, as the library was installed or built; the directory is not looked at. Empty when
   *     the place of the library cannot be determined.
   * @throws OutOfMemoryError when the name does not fit into memory
   */
  public static native String headers();

  private static void loadLibrary() {
    Set<String> tried = new LinkedHashSet<>();
    String given = System.getProperty("krpre.library");
    if (given != null) {
      if (loads(new File(given), tried)) return;
    } else {
      File home = homeOfThisClass();
      String name = System.mapLibraryName("krpre");
      if (home != null && loads(new File(home, name), tried)) return;
      if (home != null && loads(new File(home, "../../lib/" + name), tried)) return;
      try {
        System.loadLibrary("krpre");
        return;
      } catch (UnsatisfiedLinkError error) {
        tried.add(error.getMessage());
      }
    }
    throw new UnsatisfiedLinkError("the library of Krpre cannot be loaded; tried " + String.join("; ", tried));
  }

  private static boolean loads(File library, Set<String> tried) {
    if (!library.isFile()) {
      tried.add(library + " (not there)");
      return false;
    }
    try {
      System.load(library.getAbsolutePath());
      return true;
    } catch (UnsatisfiedLinkError error) {
      tried.add(library + " (" + error.getMessage() + ")");
      return false;
    }
  }

  /** The directory of the jar, or of the class file; null when it cannot be told. */
  private static File homeOfThisClass() {
    try {
      CodeSource source = Krpre.class.getProtectionDomain().getCodeSource();
      if (source == null || source.getLocation() == null) return null;
      File place = new File(source.getLocation().toURI());
      return place.isFile() ? place.getParentFile() : place;
    } catch (URISyntaxException | IllegalArgumentException | SecurityException notAFile) {
      return null;
    }
  }
}
