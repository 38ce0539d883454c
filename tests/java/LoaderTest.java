import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Paths;
import java.util.Arrays;
import java.util.stream.Stream;

/** Where the class looks for its library. The class path must hold the jar first. */
public class LoaderTest {
  public static void main(String[] unused) throws Exception {
    // As installed and built: the class finds its library by itself.
    Check.equal(0, load().status, "beside the jar");

    Check.Ended given = load("-Dkrpre.library=/nowhere/libkrpre.so");
    Check.equal(1, given.status, given.output);
    Check.that(given.output.contains("UnsatisfiedLinkError"), given.output);
    Check.that(given.output.contains("/nowhere/libkrpre.so (not there)"), given.output);

    String noLibrary = Check.write("no.so", "text");
    Check.that(load("-Dkrpre.library=" + noLibrary).output.contains(noLibrary + " ("), "tells what is wrong");
  }

  private static Check.Ended load(String... options) throws Exception {
    return Check.runVirtualMachine("C.UTF-8", Arrays.asList(options), "LoaderTest$Loading");
  }

  /** Loads the class and prints where its library was. */
  public static class Loading {
    public static void main(String[] unused) throws IOException {
      int result = new Krpre().prebuild(null);
      try (Stream<String> mapped = Files.lines(Paths.get("/proc/self/maps"))) {
        mapped.filter(line -> line.contains("libkrpre")).limit(1).forEach(System.out::println);
      }
      System.exit(result);
    }
  }
}
