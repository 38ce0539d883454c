import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Paths;

/** Calls leave nothing behind. Run it with a fixed heap and without -Xcheck:jni. */
public class MemoryTest {
  private static final int CALLS = 100_000;
  private static final int MOST_BYTES_PER_CALL = 70;

  private static final Krpre KRPRE = new Krpre();

  public static void main(String[] unused) throws Exception {
    String header = Check.write("a.ch", "#define A \"\u00e1\ud83d\ude00\"");
    String source = Check.write("a.prw", "#include \"a.ch\"\nx := A\n");
    String[] manyArguments = Check.arguments("/DA=1", "/DNAME=\u00e1", null, "-T", "@Itag");
    String[] oneFile = Check.arguments("@F" + source);

    growthOf("prebuild without a file", CALLS, () -> KRPRE.prebuild(manyArguments));
    growthOf("getCH", CALLS, () -> KRPRE.getCH(header));
    growthOf("getCH of no file", CALLS, () -> KRPRE.getCH("none"));
    growthOf("prebuild with a file", CALLS / 25, () -> KRPRE.prebuild(oneFile));
  }

  private static void growthOf(String what, int calls, Runnable call) throws IOException {
    for (int i = 0; i < calls / 4; ++i) call.run();
    // The virtual machine takes memory for itself now and then; a leak takes some each time.
    for (int round = 1; grows(what, calls, call); ++round) Check.that(round < 3, what + " grows");
  }

  private static boolean grows(String what, int calls, Runnable call) throws IOException {
    long before = residentKibibytes();
    long start = System.nanoTime();
    for (int i = 0; i < calls; ++i) call.run();
    long nanoseconds = (System.nanoTime() - start) / calls;
    long growth = residentKibibytes() - before;
    System.err.println(what + ": " + growth + " KiB in " + calls + " calls, " + nanoseconds + " ns each");
    return growth * 1024 >= (long) MOST_BYTES_PER_CALL * calls;
  }

  private static long residentKibibytes() throws IOException {
    for (String line : Files.readAllLines(Paths.get("/proc/self/status"))) {
      if (line.startsWith("VmRSS:")) return Long.parseLong(line.replaceAll("[^0-9]", ""));
    }
    throw new IOException("no VmRSS");
  }
}
