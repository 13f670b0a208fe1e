import java.io.IOException;
import java.nio.file.InvalidPathException;
import java.nio.file.Path;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;

/**
 * Makes one label and writes it to a file.
 *
 * <p>MakeLabel TYPE TEXT FILE, for example: MakeLabel jan13 490123456789 label.svg. FILE ends in .png, .svg or .pdf. Exit
 * status: 0 written, 1 refused or not written, 2 wrong usage.
 */
public final class MakeLabel {
    public static void main(String[] arguments) {
        System.exit(run(arguments));
    }

    private static int run(String[] arguments) {
        if (arguments.length != 3) {
            System.err.println("Usage: MakeLabel TYPE TEXT FILE");
            return 2;
        }
        String path = arguments[2];
        Map<String, Object> request = new LinkedHashMap<>();
        request.put("type", arguments[0]);
        request.put("text", arguments[1]);
        request.put("format", path.contains(".") ? path.substring(path.lastIndexOf('.') + 1) : "png");
        try {
            Label label = Label.make(request);
            for (Object warning : (List<?>) label.report().get("warnings")) {
                System.err.println("MakeLabel: warning " + ((Map<?, ?>) warning).get("message"));
            }
            label.save(Path.of(path));
            return 0;
        } catch (LabelError error) {
            System.err.println("MakeLabel: " + error.code() + " " + error.field() + ": " + error.getMessage());
        } catch (InvalidPathException | IOException error) {
            System.err.println("MakeLabel: cannot write " + path + ": " + error);
        }
        return 1;
    }
}
