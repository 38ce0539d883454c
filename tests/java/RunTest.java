import java.util.Arrays;

/** Runs: what reaches them from the host and what comes back. */
public class RunTest {
  private static final Krpre KRPRE = new Krpre();

  public static void main(String[] unused) throws Exception {
    elementZeroIsThePlaceOfTheProgramsName();
    nullsAreSkipped();
    charactersThatCutAnArgument();
    hostileArguments();
  }

  private static void elementZeroIsThePlaceOfTheProgramsName() throws Exception {
    String source = Check.write("a.prw", "x := 1\n");
    Check.equal(0, KRPRE.prebuild(new String[] {"@F" + source, "-I" + Check.FOLDER}), "result");
    Check.equal("(none)", Check.read("a.ppo"), "no output");
    Check.equal(0, KRPRE.prebuild(new String[] {"x", "@F" + source, "-I" + Check.FOLDER}), "result");
    Check.equal("x := 1\r\n", Check.read("a.ppo"), "output");
  }

  private static void nullsAreSkipped() throws Exception {
    String source = Check.write("nulls.prw", "x := 3\n");
    Check.equal(0, KRPRE.prebuild(null), "no array");
    Check.equal(0, KRPRE.prebuild(new String[0]), "no element");
    Check.equal(0, KRPRE.prebuild(new String[3000]), "null elements only");
    String[] some = {null, null, "-I" + Check.FOLDER, null, "@F" + source, null};
    Check.equal(0, KRPRE.prebuild(some), "null elements between others");
    Check.equal("x := 3\r\n", Check.read("nulls.ppo"), "output");
  }

  /** The run would take "a.prw", a zero and more for "a.prw". */
  private static void charactersThatCutAnArgument() throws Exception {
    String source = Check.write("zero.prw", "x := 4\n");
    String other = Check.write("other.prw", "x := 5\n");
    try {
      KRPRE.prebuild(Check.arguments("@F" + source + "\0.txt", "@F" + other, "\0"));
      Check.that(false, "an exception for the character 0");
    } catch (IllegalArgumentException expected) {
      Check.equal("(none)", Check.read("zero.ppo"), "the element is skipped");
      Check.equal("x := 5\r\n", Check.read("other.ppo"), "the others are not");
    }
  }

  private static void hostileArguments() throws Exception {
    char[] letters = new char[1 << 20];
    Arrays.fill(letters, 'x');
    String huge = new String(letters);
    String[] hostile = {"", "@", "@F", "@L", "@O", "-I", "/D", "-F", "@@", "\ud800", "@F\udc00\ud800", huge,
        "@F" + huge, "@L" + huge, "/D" + huge, "-I" + huge, "@I" + huge, "@F%s%n%s", "@F/dev/zero", "@L/", "\""};
    for (String argument : hostile) {
      String[] alone = {argument, argument};
      int result = KRPRE.prebuild(alone);
      Check.that(result == 0 || result == 15, "result " + result + " of " + alone[0]);
    }
  }
}
