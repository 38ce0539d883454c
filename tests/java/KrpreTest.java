import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.RandomAccessFile;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Comparator;
import java.util.List;
import java.util.Objects;
import java.util.stream.Stream;
import java.util.zip.DeflaterOutputStream;

/**
 * The class in real virtual machines. What arguments and headers of any kind come to is held by the
 * fuzz target "host". The class path must hold the jar first.
 */
public class KrpreTest {
  private static final String NAME = "pre\u00e7o \u20ac \ud83d\ude00";
  private static final String LETTERS = "#define A \"\u00e1\u00e7\u20ac\ud83d\ude00\u0000z\"";
  private static Path folder;

  public static void main(String[] arguments) throws Exception {
    if (arguments.length > 0) System.exit(asChild(arguments[0], arguments[1]));
    folder = Files.createTempDirectory("krpre-java");
    try {
      Files.write(folder.resolve("std.ch"), new byte[0]);
      elementsOfTheVector();
      headersAreTheirText();
      whatCannotBeReadIsEmpty();
      encodings();
      failuresOfTheVirtualMachine();
    } finally {
      try (Stream<Path> paths = Files.walk(folder)) {
        paths.sorted(Comparator.reverseOrder()).forEach(path -> path.toFile().delete());
      }
    }
  }

  private static void elementsOfTheVector() throws Exception {
    Krpre krpre = new Krpre();
    String source = "@F" + write("a.prw", "x := 1\n");
    String include = "-I" + folder;
    equal(0, krpre.prebuild(null), "no array");
    equal(true, Files.exists(Paths.get(Krpre.headers(), "std.ch")), "the shipped headers");
    equal(0, krpre.prebuild(new String[] {source, include}), "element 0 is the place of the program's name");
    equal(false, Files.exists(folder.resolve("a.ppo")), "an output");
    try {
      krpre.prebuild(new String[] {"", include, "@F" + folder + "/zero\0.prw", null, source, "\0"});
      throw new AssertionError("no exception for the character 0");
    } catch (IllegalArgumentException expected) {
      equal("x := 1\r\n", read("a.ppo"), "the other elements are not skipped");
    }
  }

  private static void headersAreTheirText() throws IOException {
    Krpre krpre = new Krpre();
    equal(LETTERS + "\r\n", krpre.getCH(write("utf8.ch", LETTERS)), "UTF-8");
    byte[] windows = "\u00e1\u00e7\u20ac\u0178\r\n\u00e9".getBytes("windows-1252");
    equal("\u00e1\u00e7\u20ac\u0178\r\n\u00e9\r\n", krpre.getCH(write("w.ch", windows)), "Windows-1252");
    equal("\u00e1\ud83d\ude00\r\n", krpre.getCH(write("p.ch", packed("\u00e1\ud83d\ude00\0b"))), "to its zero byte");
    equal("x\r\n", krpre.getCH(write("\u4e2d\u6587 " + NAME, "x")), "a name beyond ASCII");
  }

  private static void whatCannotBeReadIsEmpty() throws IOException {
    String file = write("there.ch", "x");
    byte[] good = packed("#define A 1");
    String cut = write("cut.ch", Arrays.copyOf(good, good.length - 1));
    good[7] = 0x7f;
    try (RandomAccessFile large = new RandomAccessFile(folder + "/large.ch", "rw")) {
      large.setLength((16 << 20) - 1);
    }
    for (String name : new String[] {null, "", "\0", file + "\0", "/dev/zero", "/", "\ud800", folder + "/none.ch",
        cut, write("long.ch", good), folder + "/large.ch"}) {
      equal("", new Krpre().getCH(name), "text of " + name);
    }
  }

  /** What the default encoding lacks arrives all the same, as UTF-8. */
  private static void encodings() throws Exception {
    write(NAME + ".prw", "x := TEXT\n");
    String[][] rows = {{"C.UTF-8", "-ea", "\u00c3\u00a7"}, {"C", "-ea", "\u00c3\u00a7"},
        {"C.UTF-8", "-Dfile.encoding=US-ASCII", "\u00c3\u00a7"}, {"C.UTF-8", "-Dfile.encoding=ISO-8859-1", "\u00e7"}};
    for (String[] row : rows) {
      expectChild(row[0], row[1], "run", folder.toString(), 0);
      equal("x := '" + row[2] + "?'\r\n", read(NAME + ".ppo"), Arrays.toString(row));
      Files.delete(folder.resolve(NAME + ".ppo"));
    }
  }

  private static void failuresOfTheVirtualMachine() throws Exception {
    expectChild("C", "-Dkrpre.library=/nowhere/lib.so", "load", "", 1, "UnsatisfiedLinkError", "/nowhere/lib.so (not there)");
    String noLibrary = write("no.so", "text");
    expectChild("C", "-Dkrpre.library=" + noLibrary, "load", "", 1, noLibrary + " (");
    byte[] bytes = packed("#define A 1");
    bytes[20] ^= 0x55;
    expectChild("C", "-ea", "read", write("damaged.ch", bytes), 128 + 6, "korelpre/korelprecls at line 1452", "damaged.ch");
  }

  /** What this does in a virtual machine of its own. */
  private static int asChild(String action, String file) throws IOException {
    if (action.equals("run")) {
      return new Krpre().prebuild(new String[] {"", "-I" + file, "@F" + file + "/" + NAME + ".prw", "/DTEXT='\u00e7?'"});
    }
    if (action.equals("read")) return new Krpre().getCH(file).length();
    new Krpre();
    try (Stream<String> mapped = Files.lines(new java.io.File("/proc/self/maps").toPath())) {
      mapped.filter(line -> line.contains("libkrpre")).limit(1).forEach(System.out::println);
    }
    return 0;
  }

  /** Runs an action in a virtual machine of its own, which must end with a status and print some texts. */
  private static void expectChild(String locale, String option, String action, String file, int status, String... texts)
      throws Exception {
    List<String> command = new ArrayList<>(Arrays.asList(System.getProperty("java.home") + "/bin/java", "-Xcheck:jni",
        "-XX:TieredStopAtLevel=1", "-XX:-CreateCoredumpOnCrash", "-cp", System.getProperty("java.class.path"), option,
        "KrpreTest", action, file));
    ProcessBuilder builder = new ProcessBuilder(command).directory(folder.toFile());
    builder.environment().put("LC_ALL", locale);
    Path printed = folder.resolve("printed");
    int ended = builder.redirectErrorStream(true).redirectOutput(printed.toFile()).start().waitFor();
    String output = read("printed");
    equal(status, ended, output);
    for (String text : texts) equal(true, output.contains(text), output);
    equal(false, output.contains("WARNING in native method"), output);
  }

  private static void equal(Object expected, Object actual, String what) {
    if (Objects.equals(expected, actual)) return;
    throw new AssertionError(what + ": expected <" + expected + ">, got <" + actual + ">");
  }

  private static String write(String name, byte[] bytes) throws IOException {
    return Files.write(folder.resolve(name), bytes).toString();
  }

  private static String write(String name, String text) throws IOException {
    return write(name, text.getBytes(StandardCharsets.UTF_8));
  }

  /** The bytes of a file as characters of the same numbers. */
  private static String read(String name) throws IOException {
    return new String(Files.readAllBytes(folder.resolve(name)), StandardCharsets.ISO_8859_1);
  }

  private static byte[] packed(String text) throws IOException {
    byte[] plain = text.getBytes(StandardCharsets.UTF_8);
    ByteArrayOutputStream data = new ByteArrayOutputStream();
    try (DeflaterOutputStream deflater = new DeflaterOutputStream(data)) {
      deflater.write(plain);
    }
    return ByteBuffer.allocate(12 + data.size())
        .order(ByteOrder.LITTLE_ENDIAN)
        .put("#zIp".getBytes(StandardCharsets.US_ASCII))
        .putInt(plain.length)
        .putInt(data.size())
        .put(data.toByteArray())
        .array();
  }
}
