/** A label that was refused: the code, the field that is to blame ("" where none is) and one sentence. */
public final class LabelError extends IllegalArgumentException {
    private static final long serialVersionUID = 1;
    private final String code;
    private final String field;

    public LabelError(String code, String field, String message) {
        super(message);
        this.code = code;
        this.field = field;
    }

    /** One of the words under "Errors" in barcode_label.h. */
    public String code() {
        return code;
    }

    public String field() {
        return field;
    }
}
