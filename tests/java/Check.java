import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.InputStream;
import java.io.UncheckedIOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.Objects;
import java.util.concurrent.TimeUnit;
import java.util.stream.Stream;

/** What the tests in this folder share. A check that fails throws. */
final class Check {
  /** A directory for the files of this virtual machine, with an empty standard header in it. */
  static final Path FOLDER = folder();

  private Check() {}

  static void that(boolean holds, String what) {
    if (!holds) throw new AssertionError(what);
  }

  static void equal(Object expected, Object actual, String what) {
    that(Objects.equals(expected, actual), what + ": expected <" + expected + ">, got <" + actual + ">");
  }

  private static Path folder() {
    try {
      // In memory where there is such a place: it is the calls that are tested, not the disk.
      Path memory = Paths.get("/dev/shm");
      Path folder = Files.isWritable(memory) ? Files.createTempDirectory(memory, "krpre-java")
          : Files.createTempDirectory("krpre-java");
      Runtime.getRuntime().addShutdownHook(new Thread(() -> removeAll(folder)));
      Files.write(folder.resolve("std.ch"), new byte[0]);
      return folder;
    } catch (IOException error) {
      throw new UncheckedIOException(error);
    }
  }

  private static void removeAll(Path folder) {
    try (Stream<Path> paths = Files.walk(folder)) {
      paths.sorted((a, b) -> b.compareTo(a)).forEach(path -> path.toFile().delete());
    } catch (IOException ignored) {
      // It lies among the temporary files and harms nobody.
    }
  }

  static String path(String name) {
    return FOLDER.resolve(name).toString();
  }

  static String write(String name, byte[] bytes) throws IOException {
    Files.write(FOLDER.resolve(name), bytes);
    return path(name);
  }

  static String write(String name, String text) throws IOException {
    return write(name, text.getBytes(StandardCharsets.UTF_8));
  }

  /** The bytes of a file as characters of the same numbers; "(none)" when there is no file. */
  static String read(String name) throws IOException {
    Path file = FOLDER.resolve(name);
    if (!Files.exists(file)) return "(none)";
    return new String(Files.readAllBytes(file), StandardCharsets.ISO_8859_1);
  }

  /** An argument vector: the placeholder, the include path, and these. */
  static String[] arguments(String... more) {
    List<String> all = new ArrayList<>(Arrays.asList("", "-I" + FOLDER));
    all.addAll(Arrays.asList(more));
    return all.toArray(new String[0]);
  }

  /** How a child process ended and what it printed, both streams together. */
  static final class Ended {
    int status;
    String output;
  }

  /** Runs a class of these tests in a virtual machine of its own, with these options before it. */
  static Ended runVirtualMachine(String locale, List<String> options, String... main)
      throws IOException, InterruptedException {
    List<String> command = new ArrayList<>();
    command.add(System.getProperty("java.home") + "/bin/java");
    command.add("-Xcheck:jni");
    command.addAll(Arrays.asList("-Xshare:auto", "-XX:TieredStopAtLevel=1", "-XX:-CreateCoredumpOnCrash"));
    command.addAll(Arrays.asList("-cp", System.getProperty("java.class.path")));
    command.addAll(options);
    command.addAll(Arrays.asList(main));
    ProcessBuilder builder = new ProcessBuilder(command).directory(FOLDER.toFile());
    builder.environment().put("LC_ALL", locale);
    Process process = builder.redirectErrorStream(true).start();
    Ended ended = new Ended();
    ended.output = everything(process.getInputStream());
    that(process.waitFor(30, TimeUnit.SECONDS), "the virtual machine ends");
    ended.status = process.exitValue();
    that(!ended.output.contains("WARNING in native method"), ended.output);
    return ended;
  }

  private static String everything(InputStream stream) throws IOException {
    ByteArrayOutputStream bytes = new ByteArrayOutputStream();
    byte[] buffer = new byte[4096];
    for (int length; (length = stream.read(buffer)) >= 0; ) bytes.write(buffer, 0, length);
    return new String(bytes.toByteArray(), StandardCharsets.ISO_8859_1);
  }
}
