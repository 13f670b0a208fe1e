import com.sun.jna.Library;
import com.sun.jna.Native;
import com.sun.jna.NativeLong;
import com.sun.jna.Pointer;
import com.sun.jna.ptr.NativeLongByReference;
import java.io.IOException;
import java.nio.ByteBuffer;
import java.nio.CharBuffer;
import java.nio.charset.CharacterCodingException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Map;

/**
 * A label: a picture that scans, and what there is to say of it. It holds copies of what the library made: there is
 * nothing to close, and any number of threads may make and read labels at the same time.
 */
public final class Label {
    /** The functions of barcode_label.h. A size_t is as wide as a long wherever the library runs. */
    private interface Functions extends Library {
        Pointer barcode_label_make(byte[] request, NativeLong length);

        int barcode_label_ok(Pointer label);

        Pointer barcode_label_data(Pointer label, NativeLongByReference length);

        Pointer barcode_label_media_type(Pointer label);

        Pointer barcode_label_report(Pointer label);

        void barcode_label_free(Pointer label);

        Pointer barcode_label_types();

        Pointer barcode_label_version();
    }

    private static final Functions LIBRARY = Native.load("libbarcode_label.so.1", Functions.class);

    private final byte[] data;
    private final String mediaType;
    private final Map<String, Object> report;

    private Label(byte[] data, String mediaType, Map<String, Object> report) {
        this.data = data;
        this.mediaType = mediaType;
        this.report = report;
    }

    /**
     * Makes a label.
     *
     * @param request fields of docs/labels.md: strings, numbers, booleans, null for a field that is absent, and bytes for
     *     "text_base64"
     * @throws LabelError when the library refuses the request
     * @throws IllegalArgumentException for a value of another type
     * @throws OutOfMemoryError when memory is exhausted
     */
    public static Label make(Map<String, ?> request) {
        return make(Json.write(request));
    }

    /** The same from JSON as it stands. */
    @SuppressWarnings("unchecked")
    public static Label make(String json) {
        byte[] bytes = utf8(json);
        Pointer label = LIBRARY.barcode_label_make(bytes, new NativeLong(bytes.length));
        if (label == null) {
            throw new OutOfMemoryError("There is no memory for a label");
        }
        try {
            Map<String, Object> report = (Map<String, Object>) Json.read(text(LIBRARY.barcode_label_report(label)));
            if (LIBRARY.barcode_label_ok(label) != 1) {
                throw refusal((Map<String, Object>) report.get("error"));
            }
            NativeLongByReference length = new NativeLongByReference();
            Pointer data = LIBRARY.barcode_label_data(label, length);
            return new Label(data.getByteArray(0, length.getValue().intValue()),
                    text(LIBRARY.barcode_label_media_type(label)), report);
        } finally {
            LIBRARY.barcode_label_free(label);
        }
    }

    /** The symbologies with their fields, as JSON. */
    public static String types() {
        return text(LIBRARY.barcode_label_types());
    }

    /** The version of the library, "1.0.0". */
    public static String version() {
        return text(LIBRARY.barcode_label_version());
    }

    /** The bytes of the picture. */
    public byte[] data() {
        return data.clone();
    }

    /** "image/png", "image/svg+xml" or "application/pdf". */
    public String mediaType() {
        return mediaType;
    }

    /** The report, as docs/labels.md describes it. */
    public Map<String, Object> report() {
        return report;
    }

    /** Writes the picture to a file, which is made or replaced. */
    public void save(Path path) throws IOException {
        Files.write(path, data);
    }

    private static byte[] utf8(String json) {
        try {
            ByteBuffer buffer = StandardCharsets.UTF_8.newEncoder().encode(CharBuffer.wrap(json));
            byte[] bytes = new byte[buffer.remaining()];
            buffer.get(bytes);
            return bytes;
        } catch (CharacterCodingException halfACharacter) {
            throw new LabelError("bad_request", "", "The request is no JSON in UTF-8: it holds half a character.");
        }
    }

    private static LabelError refusal(Map<String, Object> error) {
        String code = (String) error.get("code");
        if (code.equals("out_of_memory")) {
            throw new OutOfMemoryError((String) error.get("message"));
        }
        return new LabelError(code, (String) error.get("field"), (String) error.get("message"));
    }

    private static String text(Pointer bytes) {
        return bytes.getString(0, "UTF-8");
    }
}
