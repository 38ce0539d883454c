import java.util.ArrayList;
import java.util.Arrays;
import java.util.Collections;
import java.util.List;
import java.util.concurrent.Callable;
import java.util.concurrent.ExecutorService;
import java.util.concurrent.Executors;
import java.util.concurrent.Future;

/** Runs: what reaches them from the host and what comes back. */
public class RunTest {
  private static final Krpre KRPRE = new Krpre();

  public static void main(String[] unused) throws Exception {
    elementZeroIsThePlaceOfTheProgramsName();
    severalFilesAndTheLastFailureDecides();
    anyNumberOfElements();
    nullsAreSkipped();
    charactersThatCutAnArgument();
    hostileArguments();
    messagesStandInOrder();
    threadsWithTheirOwnTags();
  }

  private static void elementZeroIsThePlaceOfTheProgramsName() throws Exception {
    String source = Check.write("a.prw", "x := 1\n");
    Check.equal(0, KRPRE.prebuild(new String[] {"@F" + source, "-I" + Check.FOLDER}), "result");
    Check.equal("(none)", Check.read("a.ppo"), "no output");
    Check.equal(0, KRPRE.prebuild(new String[] {"x", "@F" + source, "-I" + Check.FOLDER}), "result");
    Check.equal("x := 1\r\n", Check.read("a.ppo"), "output");
  }

  private static void severalFilesAndTheLastFailureDecides() throws Exception {
    String good = Check.write("good.prw", "y := 2\n");
    String bad = Check.write("bad.prw", "#else\n");
    String missing = Check.path("missing.prw");
    Check.equal(1, KRPRE.prebuild(Check.arguments("@F" + bad, "@F" + good)), "error, then ok");
    Check.equal("y := 2\r\n", Check.read("good.ppo"), "output behind a failure");
    Check.equal(15, KRPRE.prebuild(Check.arguments("@F" + bad, "@F" + missing)), "error, then none");
    Check.equal(1, KRPRE.prebuild(Check.arguments("@F" + missing, "@F" + bad)), "none, then error");
  }

  private static void anyNumberOfElements() throws Exception {
    String source = Check.write("many.prw", "x := FIRST + LAST\n");
    for (int count : new int[] {21, 5000}) {
      List<String> many = new ArrayList<>(Collections.nCopies(count, "/DNAME=" + count));
      many.add("/DLAST=" + count);
      many.add("@F" + source);
      many.add(0, "/DFIRST=1");
      Check.equal(0, KRPRE.prebuild(Check.arguments(many.toArray(new String[0]))), "result");
      Check.equal("x := 1 + " + count + "\r\n", Check.read("many.ppo"), "output");
    }
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

  /** The virtual machine's own output goes past the buffer that the messages go through. */
  private static void messagesStandInOrder() throws Exception {
    Check.Ended ended = Check.runVirtualMachine("C.UTF-8", Collections.emptyList(), "RunTest$Printing");
    Check.equal(0, ended.status, ended.output);
    int before = ended.output.indexOf("before"), message = ended.output.indexOf("Build"),
        after = ended.output.indexOf("after");
    Check.that(0 <= before && before < message && message < after, ended.output);
  }

  /** Prints between messages, in a virtual machine of its own. */
  public static class Printing {
    public static void main(String[] unused) {
      System.out.println("before");
      new Krpre().prebuild(new String[] {"", "-v"});
      System.out.println("after");
    }
  }

  private static void threadsWithTheirOwnTags() throws Exception {
    ExecutorService threads = Executors.newFixedThreadPool(8);
    List<Future<Void>> runs = new ArrayList<>();
    for (int thread = 0; thread < 8; ++thread) runs.add(threads.submit(runsOf(thread)));
    threads.shutdown();
    for (Future<Void> run : runs) run.get();
  }

  private static Callable<Void> runsOf(int thread) {
    return () -> {
      String name = "thread" + thread;
      Check.write(name + ".ch", "#define VALUE " + thread + "\n#xcommand SHOW <x> => Tell(<x>, VALUE)\n");
      String source = Check.write(name + ".prw", "#include \"" + name + ".ch\"\nSHOW OTHER\n");
      for (int round = 0; round < 50; ++round) {
        int result = KRPRE.prebuild(Check.arguments("@F" + source, "@I" + name, "/DOTHER=" + round));
        Check.equal(0, result, name);
        String output = Check.read(name + ".ppo");
        Check.that(output.endsWith("Tell(" + round + ", " + thread + ")\r\n"), output);
      }
      return null;
    };
  }
}
