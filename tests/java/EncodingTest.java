import java.util.Arrays;
import java.util.Collections;
import java.util.List;

/** Arguments beyond ASCII under several default encodings, each in a virtual machine of its own. */
public class EncodingTest {
  private static final String NAME = "pre\u00e7o \u20ac \ud83d\ude00";

  public static void main(String[] unused) throws Exception {
    Check.write(NAME + ".prw", "x := TEXT\n");
    // A name that the encoding lacks arrives all the same, as UTF-8.
    run("C.UTF-8", Collections.emptyList(), "\u00c3\u00a7");
    run("C", Collections.emptyList(), "\u00c3\u00a7");
    run("C.UTF-8", Collections.singletonList("-Dfile.encoding=US-ASCII"), "\u00c3\u00a7");
    // What it has arrives in it.
    run("C.UTF-8", Collections.singletonList("-Dfile.encoding=ISO-8859-1"), "\u00e7");
  }

  private static void run(String locale, List<String> options, String expected) throws Exception {
    String what = locale + " " + options;
    Check.Ended ended = Check.runVirtualMachine(locale, options, "EncodingTest$Running", Check.FOLDER.toString());
    Check.equal(0, ended.status, what + ": " + ended.output);
    Check.equal("x := '" + expected + "?'\r\n", Check.read(NAME + ".ppo"), what);
    Check.that(new java.io.File(Check.path(NAME + ".ppo")).delete(), "the output is removed");
  }

  /** Preprocesses the source in the folder that it is given. */
  public static class Running {
    public static void main(String[] folder) {
      String[] arguments = {"", "-I" + folder[0], "@F" + folder[0] + "/" + NAME + ".prw", "/DTEXT='\u00e7?'"};
      System.exit(new Krpre().prebuild(arguments));
    }
  }
}
