<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>PluginLocale</name>
    <message>
        <source>Plugin Settings - %@</source>
        <translation>Réglages du module - %@</translation>
    </message>
    <message>
        <source>Do you want to apply the settings?</source>
        <translation>Voulez-vous appliquer les réglages ?</translation>
    </message>
    <message>
        <source>PrivateV-Select a image file</source>
        <translation>Choisir un fichier image</translation>
    </message>
    <message>
        <source>PrivateV-Copy Failed!</source>
        <translation>La copie a échoué !</translation>
    </message>
</context>
<context>
    <name>PluginSettingsDelegate</name>
    <message>
        <source>Plugin Settings - Image Plugin</source>
        <translation>Réglages du module - Image Plugin</translation>
    </message>
    <message>
        <source>Position on the page</source>
        <translation>Position sur la page</translation>
    </message>
    <message>
        <source>Drag the box to move the image; drag its handles to resize it.</source>
        <translation>Faites glisser le cadre pour déplacer l&apos;image, ou ses poignées pour la redimensionner.</translation>
    </message>
    <message>
        <source>Left (%):</source>
        <translation>Gauche (%) :</translation>
    </message>
    <message>
        <source>Top (%):</source>
        <translation>Haut (%) :</translation>
    </message>
    <message>
        <source>Right (%):</source>
        <translation>Droite (%) :</translation>
    </message>
    <message>
        <source>Bottom (%):</source>
        <translation>Bas (%) :</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Apparence</translation>
    </message>
    <message>
        <source>Transparency (%):</source>
        <translation>Transparence (%) :</translation>
    </message>
    <message>
        <source>Layer:</source>
        <translation>Calque :</translation>
    </message>
    <message>
        <source>Above the page content</source>
        <translation>Au-dessus du contenu de la page</translation>
    </message>
    <message>
        <source>Below the page content</source>
        <translation>Sous le contenu de la page</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Image</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Aperçu</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Par défaut</translation>
    </message>
    <message>
        <source>Put the image back at its default position.</source>
        <translation>Remet l&apos;image à sa position par défaut.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
<context>
    <name>PrivateView</name>
    <message>
        <source>Link</source>
        <translation>Lien</translation>
    </message>
    <message>
        <source>http://</source>
        <translation>http://</translation>
    </message>
    <message>
        <source>Local file</source>
        <translation>Fichier local</translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation>Parcourir...</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Enregistrer</translation>
    </message>
</context>
</TS>
