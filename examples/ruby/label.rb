# frozen_string_literal: true

# Labels from Ruby, through Fiddle: Label.make(type: 'qr', text: 'hello').save('label.png').

require 'fiddle'
require 'json'

# A label that was refused: code is one of the words under "Errors" in barcode_label.h, field the field that is to blame
# ('' where none is), message one sentence.
class LabelError < ArgumentError
  attr_reader :code, :field

  def initialize(code, field, message)
    super(message)
    @code = code
    @field = field
  end
end

# A label: a picture that scans, and what there is to say of it. It holds copies of what the library made: there is
# nothing to close, and any number of threads may make and read labels at the same time.
class Label
  # The functions of barcode_label.h.
  module Library
    FILE = Fiddle.dlopen('libbarcode_label.so.1')

    def self.function(name, arguments, result)
      Fiddle::Function.new(FILE["barcode_label_#{name}"], arguments, result)
    end

    MAKE = function('make', [Fiddle::TYPE_VOIDP, Fiddle::TYPE_SIZE_T], Fiddle::TYPE_VOIDP)
    OK = function('ok', [Fiddle::TYPE_VOIDP], Fiddle::TYPE_INT)
    DATA = function('data', [Fiddle::TYPE_VOIDP, Fiddle::TYPE_VOIDP], Fiddle::TYPE_VOIDP)
    MEDIA_TYPE = function('media_type', [Fiddle::TYPE_VOIDP], Fiddle::TYPE_VOIDP)
    REPORT = function('report', [Fiddle::TYPE_VOIDP], Fiddle::TYPE_VOIDP)
    FREE = function('free', [Fiddle::TYPE_VOIDP], Fiddle::TYPE_VOID)
    TYPES = function('types', [], Fiddle::TYPE_VOIDP)
    VERSION = function('version', [], Fiddle::TYPE_VOIDP)
  end
  private_constant :Library

  # The bytes of the picture; 'image/png', 'image/svg+xml' or 'application/pdf'; the report of docs/labels.md.
  attr_reader :data, :media_type, :report

  # Makes a label. The request has fields of docs/labels.md, by strings or symbols: strings, numbers, booleans, nil for a
  # field that is absent. Raises LabelError when the library refuses it, TypeError for a value of another type,
  # NoMemoryError.
  def self.make(request)
    raise TypeError, "A request is a Hash, not a #{request.class}." unless request.is_a?(Hash)

    members = request.map do |field, value|
      raise TypeError, "The name of a field is a #{field.class}." unless field.is_a?(String) || field.is_a?(Symbol)

      name = field.to_s
      "#{json_string(name, name)}:#{json(name, value)}"
    end
    make_from_json("{#{members.join(',')}}")
  end

  # The same from JSON as it stands.
  def self.make_from_json(json)
    raise TypeError, "JSON is a String, not a #{json.class}." unless json.is_a?(String)

    label = Library::MAKE.call(json, json.bytesize)
    raise NoMemoryError, 'There is no memory for a label' if label.null?

    begin
      report = JSON.parse(text(Library::REPORT.call(label)))
      refuse(report['error']) unless Library::OK.call(label) == 1

      new(bytes(label), text(Library::MEDIA_TYPE.call(label)), report)
    ensure
      Library::FREE.call(label)
    end
  end

  # The symbologies with their fields.
  def self.types
    JSON.parse(text(Library::TYPES.call))
  end

  # The version of the library, '1.0.0'.
  def self.version
    text(Library::VERSION.call)
  end

  # Writes the picture to a file, which is made or replaced.
  def save(path)
    File.binwrite(path, data)
  end

  class << self
    private :new

    private

    def refuse(error)
      raise NoMemoryError, error['message'] if error['code'] == 'out_of_memory'

      raise LabelError.new(error['code'], error['field'], error['message'])
    end

    def bytes(label)
      length = Fiddle::Pointer.malloc(Fiddle::SIZEOF_SIZE_T, Fiddle::RUBY_FREE)
      data = Library::DATA.call(label, length)
      data[0, length[0, Fiddle::SIZEOF_SIZE_T].unpack1('J')].freeze
    end

    def text(pointer)
      pointer.to_s.force_encoding(Encoding::UTF_8).freeze
    end

    def json(field, value)
      case value
      when nil then 'null'
      when true, false, Integer then value.to_s
      # What JSON has no number for is sent as one that is too large for every field.
      when Float then value.finite? ? value.to_s : '1e999'
      when String then json_string(field, value)
      else raise TypeError, "The field \"#{field}\" is a #{value.class}; it must be a string, a number, a boolean or nil."
      end
    end

    def json_string(field, value)
      utf8 = value.encoding == Encoding::BINARY ? value.dup.force_encoding(Encoding::UTF_8) : value.encode(Encoding::UTF_8)
      raise EncodingError unless utf8.valid_encoding?

      escaped = utf8.gsub(/["\\\u0000-\u001f]/) { |character| format('\\u%04x', character.ord) }
      "\"#{escaped}\""
    rescue EncodingError
      raise LabelError.new('bad_value', field, "The field \"#{field}\" must be a string in UTF-8.")
    end
  end

  def initialize(data, media_type, report)
    @data = data
    @media_type = media_type
    @report = report
  end
end
