<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Call</name>
    <message>
        <source>the decoder does not start: %1</source>
        <translation>Der Decoder startet nicht: %1</translation>
    </message>
    <message>
        <source>the encoder takes no sink</source>
        <translation>Der Encoder nimmt keine Senke an</translation>
    </message>
    <message>
        <source>the camera takes no encoder</source>
        <translation>Die Kamera nimmt keinen Encoder an</translation>
    </message>
    <message>
        <source>the camera failed: %1</source>
        <translation>Die Kamera ist ausgefallen: %1</translation>
    </message>
    <message>
        <source>the encoder failed: %1</source>
        <translation>Der Encoder ist ausgefallen: %1</translation>
    </message>
    <message>
        <source>the decoder failed: %1</source>
        <translation>Der Decoder ist ausgefallen: %1</translation>
    </message>
    <message>
        <source>the network failed: %1</source>
        <translation>Das Netzwerk ist ausgefallen: %1</translation>
    </message>
</context>
<context>
    <name>CallNetwork</name>
    <message>
        <source>cannot listen on %1 and the port after it: %2</source>
        <translation>Auf %1 und dem Port danach kann nichts empfangen werden: %2</translation>
    </message>
    <message>
        <source>cannot call %1: %2</source>
        <translation>%1 kann nicht angerufen werden: %2</translation>
    </message>
    <message>
        <source>cannot reach %1: %2</source>
        <translation>%1 ist nicht erreichbar: %2</translation>
    </message>
</context>
<context>
    <name>CallSettings</name>
    <message>
        <source>Calls itself over UDP on 127.0.0.1. This is the default.</source>
        <translation>Ruft sich über UDP auf 127.0.0.1 selbst an. Das ist die Voreinstellung.</translation>
    </message>
    <message>
        <source>The UDP port that the peer&apos;s pictures come to, 5004 with a peer and any free one in the loopback; RTCP uses the port after it. Listens on 127.0.0.1, or with a peer on another machine on the address from which that one is reached, unless an address is given.</source>
        <translation>Der UDP-Port, an dem die Bilder der Gegenstelle ankommen: mit einer Gegenstelle 5004, sonst irgendein freier; RTCP benutzt den Port danach. Empfangen wird auf 127.0.0.1, bei einer Gegenstelle auf einem anderen Rechner auf der Adresse, von der aus dieser erreicht wird, es sei denn, eine Adresse ist angegeben.</translation>
    </message>
    <message>
        <source>[ADDRESS:]PORT</source>
        <translation>[ADRESSE:]PORT</translation>
    </message>
    <message>
        <source>Sends to this peer instead of to itself.</source>
        <translation>Sendet an diese Gegenstelle statt an sich selbst.</translation>
    </message>
    <message>
        <source>HOST:PORT</source>
        <translation>RECHNER:PORT</translation>
    </message>
    <message>
        <source>Ends the call after so many seconds.</source>
        <translation>Beendet den Anruf nach so vielen Sekunden.</translation>
    </message>
    <message>
        <source>SECONDS</source>
        <translation>SEKUNDEN</translation>
    </message>
    <message>
        <source>Shows no window and needs no display.</source>
        <translation>Zeigt kein Fenster und braucht keine Anzeige.</translation>
    </message>
    <message>
        <source>Saves the last remote picture as a PNG when the call ends.</source>
        <translation>Speichert am Ende des Anrufs das letzte empfangene Bild als PNG.</translation>
    </message>
    <message>
        <source>FILE</source>
        <translation>DATEI</translation>
    </message>
    <message>
        <source>The camera, by device name or description; else the default camera.</source>
        <translation>Die Kamera, nach Gerätename oder Beschreibung; sonst die Standardkamera.</translation>
    </message>
    <message>
        <source>NAME</source>
        <translation>NAME</translation>
    </message>
    <message>
        <source>Plays this video file as the camera, in a loop.</source>
        <translation>Spielt diese Videodatei in einer Schleife als Kamera ab.</translation>
    </message>
    <message>
        <source>The codec, H264, VP8, VP9 or H265, or the id of an encoder; else the first there is.</source>
        <translation>Der Codec, H264, VP8, VP9 oder H265, oder die Kennung eines Encoders; sonst der erste vorhandene.</translation>
    </message>
    <message>
        <source>Bits per second, also as 800k or 2M; by default as the size needs, 2M at 1280x720.</source>
        <translation>Bits pro Sekunde, auch als 800k oder 2M; voreingestellt so viel, wie die Größe braucht, 2M bei 1280x720.</translation>
    </message>
    <message>
        <source>BITS</source>
        <translation>BITS</translation>
    </message>
    <message>
        <source>The size of the picture; by default the camera&apos;s, up to 1280x720.</source>
        <translation>Die Größe des Bildes; voreingestellt die der Kamera, bis 1280x720.</translation>
    </message>
    <message>
        <source>WxH</source>
        <translation>BxH</translation>
    </message>
    <message>
        <source>Frames per second, by default 30.</source>
        <translation>Bilder pro Sekunde, voreingestellt 30.</translation>
    </message>
    <message>
        <source>RATE</source>
        <translation>RATE</translation>
    </message>
    <message>
        <source>Makes a video call, by default of the machine with itself.</source>
        <translation>Führt einen Videoanruf, voreingestellt des Rechners mit sich selbst.</translation>
    </message>
    <message>
        <source>Lists the cameras.</source>
        <translation>Listet die Kameras auf.</translation>
    </message>
    <message>
        <source>Lists the encoders and decoders.</source>
        <translation>Listet die Encoder und Decoder auf.</translation>
    </message>
    <message>
        <source>Shows this help.</source>
        <translation>Zeigt diese Hilfe.</translation>
    </message>
    <message>
        <source>Shows the version.</source>
        <translation>Zeigt die Version.</translation>
    </message>
    <message>
        <source>unexpected argument &apos;%1&apos;</source>
        <translation>Unerwartetes Argument „%1“</translation>
    </message>
    <message>
        <source>
Exit codes: 0 pictures came through, 1 bad option, 2 no camera or it failed,
3 no codec or it failed, 4 port in use, 5 network failure, 6 no picture received,
7 snapshot not written, 8 no display.
</source>
        <translation>
Rückgabewerte: 0 Bilder sind angekommen, 1 falsche Option, 2 keine Kamera oder
Kamera ausgefallen, 3 kein Codec oder Codec ausgefallen, 4 Port belegt,
5 Netzwerkfehler, 6 kein Bild empfangen, 7 Standbild nicht gespeichert,
8 keine Anzeige.
</translation>
    </message>
    <message>
        <source>--loopback and --peer exclude each other</source>
        <translation>--loopback und --peer schließen einander aus</translation>
    </message>
    <message>
        <source>--peer needs HOST:PORT, not &apos;%1&apos;</source>
        <translation>--peer braucht RECHNER:PORT, nicht „%1“</translation>
    </message>
    <message>
        <source>--listen needs a port from 1 to 65534, not &apos;%1&apos;</source>
        <translation>--listen braucht einen Port von 1 bis 65534, nicht „%1“</translation>
    </message>
    <message>
        <source>--%1 needs a name</source>
        <translation>--%1 braucht einen Namen</translation>
    </message>
    <message>
        <source>--camera and --camera-file exclude each other</source>
        <translation>--camera und --camera-file schließen einander aus</translation>
    </message>
    <message>
        <source>--bitrate needs 10k to 200M, not &apos;%1&apos;</source>
        <translation>--bitrate braucht einen Wert von 10k bis 200M, nicht „%1“</translation>
    </message>
    <message>
        <source>--size needs two even numbers from %1 to %2 such as 640x360, not &apos;%3&apos;</source>
        <translation>--size braucht zwei gerade Zahlen von %1 bis %2 wie 640x360, nicht „%3“</translation>
    </message>
    <message>
        <source>--%1 needs a number above 0 and up to %2, not &apos;%3&apos;</source>
        <translation>--%1 braucht eine Zahl über 0 und bis %2, nicht „%3“</translation>
    </message>
    <message>
        <source>--snapshot needs the name of a file</source>
        <translation>--snapshot braucht den Namen einer Datei</translation>
    </message>
</context>
<context>
    <name>CallStatistics</name>
    <message>
        <source>sending %1 kbit/s, receiving %2 kbit/s, median latency %3</source>
        <translation>sendet %1 kbit/s, empfängt %2 kbit/s, mittlere Verzögerung %3</translation>
    </message>
    <message>
        <source>%1 s: captured %2, sent %3, received %4, presented %5, packets lost %6, %7</source>
        <translation>%1 s: aufgenommen %2, gesendet %3, empfangen %4, angezeigt %5, Pakete verloren %6, %7</translation>
    </message>
    <message>
        <source>duration: %1 s</source>
        <translation>Dauer: %1 s</translation>
    </message>
    <message>
        <source>frames captured: %1</source>
        <translation>Bilder aufgenommen: %1</translation>
    </message>
    <message>
        <source>frames encoded: %1</source>
        <translation>Bilder codiert: %1</translation>
    </message>
    <message>
        <source>frames sent: %1</source>
        <translation>Bilder gesendet: %1</translation>
    </message>
    <message>
        <source>frames received: %1</source>
        <translation>Bilder empfangen: %1</translation>
    </message>
    <message>
        <source>frames decoded: %1</source>
        <translation>Bilder decodiert: %1</translation>
    </message>
    <message>
        <source>frames presented: %1</source>
        <translation>Bilder angezeigt: %1</translation>
    </message>
    <message>
        <source>frames lost: %1</source>
        <translation>Bilder verloren: %1</translation>
    </message>
    <message>
        <source>n/a</source>
        <translation>k. A.</translation>
    </message>
    <message>
        <source>packets lost: %1</source>
        <translation>Pakete verloren: %1</translation>
    </message>
    <message>
        <source>bit rate sent: %1 kbit/s</source>
        <translation>Bitrate beim Senden: %1 kbit/s</translation>
    </message>
    <message>
        <source>bit rate received: %1 kbit/s</source>
        <translation>Bitrate beim Empfangen: %1 kbit/s</translation>
    </message>
    <message>
        <source>capture to present, median: %1</source>
        <translation>Aufnahme bis Anzeige, Median: %1</translation>
    </message>
    <message>
        <source>capture to present, 95th percentile: %1</source>
        <translation>Aufnahme bis Anzeige, 95. Perzentil: %1</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 ms</translation>
    </message>
</context>
<context>
    <name>CallWindow</name>
    <message>
        <source>Qt FaceLink call</source>
        <translation>Qt-FaceLink-Anruf</translation>
    </message>
    <message>
        <source>Waiting for the other end</source>
        <translation>Warten auf die Gegenstelle</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Calling</source>
        <translation>Anruf läuft</translation>
    </message>
</context>
<context>
    <name>CameraControl</name>
    <message>
        <source>The capture mode %1 is not supported</source>
        <translation>Der Aufnahmemodus %1 wird nicht unterstützt</translation>
    </message>
</context>
<context>
    <name>CameraDevices</name>
    <message>
        <source>Test picture</source>
        <translation>Testbild</translation>
    </message>
    <message>
        <source>Video file %1</source>
        <translation>Videodatei %1</translation>
    </message>
</context>
<context>
    <name>CameraSelection</name>
    <message>
        <source>cannot read the camera file &apos;%1&apos;</source>
        <translation>Die Kameradatei „%1“ kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>there is no camera, or no camera backend</source>
        <translation>Es gibt keine Kamera oder kein Backend für Kameras</translation>
    </message>
    <message>
        <source>there is no camera &apos;%1&apos;</source>
        <translation>Es gibt keine Kamera „%1“</translation>
    </message>
</context>
<context>
    <name>CameraSession</name>
    <message>
        <source>no more pictures come</source>
        <translation>Es kommen keine Bilder mehr</translation>
    </message>
    <message>
        <source>There is no camera</source>
        <translation>Es gibt keine Kamera</translation>
    </message>
    <message>
        <source>the camera has been unplugged</source>
        <translation>Die Kamera wurde abgezogen</translation>
    </message>
</context>
<context>
    <name>CodecSelection</name>
    <message>
        <source>there is no codec for calls, or no codec backend</source>
        <translation>Es gibt keinen Codec für Anrufe oder kein Backend für Codecs</translation>
    </message>
    <message>
        <source>there is no codec &apos;%1&apos; for calls</source>
        <translation>Es gibt keinen Codec „%1“ für Anrufe</translation>
    </message>
</context>
<context>
    <name>DecodeControl</name>
    <message>
        <source>%1: no pictures come from the decoder</source>
        <translation>%1: Vom Decoder kommen keine Bilder</translation>
    </message>
    <message>
        <source>No decoder is installed</source>
        <translation>Es ist kein Decoder installiert</translation>
    </message>
    <message>
        <source>No decoder for %1 is installed</source>
        <translation>Es ist kein Decoder für %1 installiert</translation>
    </message>
    <message>
        <source>The codec &quot;%1&quot; is unknown</source>
        <translation>Der Codec „%1“ ist unbekannt</translation>
    </message>
    <message>
        <source>The data is no %1 frame</source>
        <translation>Die Daten sind kein %1-Bild</translation>
    </message>
</context>
<context>
    <name>EncodeControl</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>EncodedVideoSourceControl</name>
    <message>
        <source>A sink does not take %1 video of %2x%3 pixels</source>
        <translation>Eine Senke nimmt kein %1-Video mit %2x%3 Pixeln an</translation>
    </message>
</context>
<context>
    <name>EncoderConfiguration</name>
    <message>
        <source>There is no encoder</source>
        <translation>Es gibt keinen Encoder</translation>
    </message>
    <message>
        <source>There is no encoder for &quot;%1&quot;</source>
        <translation>Es gibt keinen Encoder für „%1“</translation>
    </message>
    <message>
        <source>%1 frames cannot be encoded</source>
        <translation>Bilder im Format %1 können nicht codiert werden</translation>
    </message>
    <message>
        <source>The frames&apos; format cannot be encoded</source>
        <translation>Das Format der Bilder kann nicht codiert werden</translation>
    </message>
    <message>
        <source>Video of %1x%2 pixels cannot be encoded: both must be even and from %3x%4 to %5x%6, with %7 pixels at most</source>
        <translation>Video mit %1x%2 Pixeln kann nicht codiert werden: Beide Zahlen müssen gerade sein und zwischen %3x%4 und %5x%6 liegen, bei höchstens %7 Pixeln</translation>
    </message>
    <message>
        <source>Video of %1 frames a second cannot be encoded: the rate must be from %2 to %3</source>
        <translation>Video mit %1 Bildern pro Sekunde kann nicht codiert werden: Die Rate muss zwischen %2 und %3 liegen</translation>
    </message>
</context>
<context>
    <name>FaceLinkCall</name>
    <message>
        <source>there is no camera, or no camera backend</source>
        <translation>Es gibt keine Kamera oder kein Backend für Kameras</translation>
    </message>
    <message>
        <source>encoder</source>
        <translation>Encoder</translation>
    </message>
    <message>
        <source>decoder</source>
        <translation>Decoder</translation>
    </message>
    <message>
        <source>hardware</source>
        <translation>Hardware</translation>
    </message>
    <message>
        <source>there is no codec, or no codec backend</source>
        <translation>Es gibt keinen Codec oder kein Backend für Codecs</translation>
    </message>
    <message>
        <source>cannot write the snapshot &apos;%1&apos;</source>
        <translation>Das Standbild „%1“ kann nicht gespeichert werden</translation>
    </message>
    <message>
        <source>no picture was received</source>
        <translation>Es wurde kein Bild empfangen</translation>
    </message>
    <message>
        <source>there is no display; --headless needs none</source>
        <translation>Es gibt keine Anzeige; --headless braucht keine</translation>
    </message>
</context>
<context>
    <name>FaceLinkInfo</name>
    <message>
        <source>Lists the cameras, encoders and decoders that Qt FaceLink&apos;s backends offer.</source>
        <translation>Listet die Kameras, Encoder und Decoder auf, die die Backends von Qt FaceLink bieten.</translation>
    </message>
    <message>
        <source>Writes JSON, for other programs.</source>
        <translation>Gibt JSON aus, für andere Programme.</translation>
    </message>
    <message>
        <source>Opens each camera, and lists its picture sizes, frame rates and pixel formats.</source>
        <translation>Öffnet jede Kamera und listet ihre Bildgrößen, Bildraten und Pixelformate auf.</translation>
    </message>
    <message>
        <source>unexpected argument &apos;%1&apos;</source>
        <translation>Unerwartetes Argument „%1“</translation>
    </message>
    <message>
        <source>there is no backend. QT_PLUGIN_PATH adds to where backends are looked for:
  %1/mediaservice</source>
        <translation>Es gibt kein Backend. QT_PLUGIN_PATH fügt Ordner hinzu, in denen danach gesucht wird:
  %1/mediaservice</translation>
    </message>
</context>
<context>
    <name>Pipeline</name>
    <message>
        <source>The pipeline cannot be set to %1</source>
        <translation>Die Pipeline kann nicht in den Zustand %1 gebracht werden</translation>
    </message>
    <message>
        <source>%1: the element is not installed</source>
        <translation>%1: Das Element ist nicht installiert</translation>
    </message>
</context>
<context>
    <name>QFLCamera</name>
    <message>
        <source>The camera service is missing</source>
        <translation>Der Kameradienst fehlt</translation>
    </message>
</context>
<context>
    <name>RtpTransport</name>
    <message>
        <source>GStreamer does not start</source>
        <translation>GStreamer startet nicht</translation>
    </message>
    <message>
        <source>the RTP pipeline does not start</source>
        <translation>Die RTP-Pipeline startet nicht</translation>
    </message>
</context>
<context>
    <name>SurfaceGroup</name>
    <message>
        <source>The video surface takes none of the available pixel formats</source>
        <translation>Die Videofläche nimmt keines der verfügbaren Pixelformate an</translation>
    </message>
    <message>
        <source>The video surface doesn&apos;t start with pictures of %1x%2</source>
        <translation>Die Videofläche startet nicht mit Bildern von %1x%2</translation>
    </message>
    <message>
        <source>The video surface has stopped showing pictures</source>
        <translation>Die Videofläche zeigt keine Bilder mehr an</translation>
    </message>
</context>
<context>
    <name>TextReport</name>
    <message>
        <source>at the front</source>
        <translation>vorn</translation>
    </message>
    <message>
        <source>at the back</source>
        <translation>hinten</translation>
    </message>
    <message>
        <source>position unknown</source>
        <translation>Lage unbekannt</translation>
    </message>
    <message>
        <source>any number at once</source>
        <translation>beliebig viele zugleich</translation>
    </message>
    <message>
        <source>%1 at once</source>
        <translation>%1 zugleich</translation>
    </message>
    <message>
        <source>hardware</source>
        <translation>Hardware</translation>
    </message>
    <message>
        <source>software</source>
        <translation>Software</translation>
    </message>
    <message>
        <source>Cameras:</source>
        <translation>Kameras:</translation>
    </message>
    <message>
        <source>Encoders:</source>
        <translation>Encoder:</translation>
    </message>
    <message>
        <source>Decoders:</source>
        <translation>Decoder:</translation>
    </message>
    <message>
        <source>  none</source>
        <translation>  keine</translation>
    </message>
    <message>
        <source>turned by %1°</source>
        <translation>um %1° gedreht</translation>
    </message>
    <message>
        <source>, the default</source>
        <translation>, Voreinstellung</translation>
    </message>
    <message>
        <source>    %1x%2, %3 to %4 frames a second, %5</source>
        <translation>    %1x%2, %3 bis %4 Bilder pro Sekunde, %5</translation>
    </message>
</context>
<context>
    <name>Video4LinuxCameraSource</name>
    <message>
        <source>%1: there is no such camera</source>
        <translation>%1: Diese Kamera gibt es nicht</translation>
    </message>
    <message>
        <source>%1: the camera has no usable format</source>
        <translation>%1: Die Kamera hat kein brauchbares Format</translation>
    </message>
    <message>
        <source>no source element</source>
        <translation>kein Quellelement</translation>
    </message>
    <message>
        <source>another program may be using the camera (%1)</source>
        <translation>Vielleicht benutzt ein anderes Programm die Kamera (%1)</translation>
    </message>
    <message>
        <source>the camera has been unplugged (%1)</source>
        <translation>Die Kamera wurde abgezogen (%1)</translation>
    </message>
</context>
<context>
    <name>VideoFileProbe</name>
    <message>
        <source>%1: the file does not exist</source>
        <translation>%1: Die Datei gibt es nicht</translation>
    </message>
    <message>
        <source>%1: the file cannot be read</source>
        <translation>%1: Die Datei kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>the file took too long to read</source>
        <translation>Das Lesen der Datei hat zu lange gedauert</translation>
    </message>
    <message>
        <source>the file has no video stream</source>
        <translation>Die Datei hat keinen Videostrom</translation>
    </message>
    <message>
        <source>the file is no video (%1)</source>
        <translation>Die Datei ist kein Video (%1)</translation>
    </message>
    <message>
        <source>there is no decoder for %1</source>
        <translation>Es gibt keinen Decoder für %1</translation>
    </message>
</context>
</TS>
