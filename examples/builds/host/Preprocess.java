import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;

/** A host in Java: preprocesses sources. Arguments: output directory, include directories, sources. */
public class Preprocess {
  public static void main(String[] arguments) {
    List<String> run = new ArrayList<>();
    run.add("");
    run.add("@O" + arguments[0]);
    run.add("-I" + arguments[1] + ";" + Krpre.headers());
    for (String source : Arrays.asList(arguments).subList(2, arguments.length)) run.add("@F" + source);
    System.exit(new Krpre().prebuild(run.toArray(new String[0])) == Krpre.OK ? 0 : 1);
  }
}
